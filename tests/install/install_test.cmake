# Installs into a folder of its own, then builds and runs a client against it,
# once as a CMake package and once through pkg-config.
set(STAGE ${CMAKE_CURRENT_BINARY_DIR}/install)
set(CLIENT_SOURCE ${CMAKE_CURRENT_SOURCE_DIR}/install)

add_test(NAME install.clean COMMAND ${CMAKE_COMMAND} -E rm -rf ${STAGE})
add_test(NAME install.install
  COMMAND ${CMAKE_COMMAND} --install ${CMAKE_BINARY_DIR} --prefix ${STAGE}/prefix)
set_tests_properties(install.clean PROPERTIES FIXTURES_SETUP clean_stage)
set_tests_properties(install.install PROPERTIES
  FIXTURES_REQUIRED clean_stage FIXTURES_SETUP installed)

add_test(NAME install.cmake_client
  COMMAND ${CMAKE_CTEST_COMMAND} --build-and-test ${CLIENT_SOURCE} ${STAGE}/client
    --build-generator Ninja
    --build-options -DCMAKE_CXX_COMPILER=${CMAKE_CXX_COMPILER}
      -DCMAKE_PREFIX_PATH=${STAGE}/prefix
    --test-command ${STAGE}/client/client)
add_test(NAME install.pkgconfig_client
  COMMAND ${CLIENT_SOURCE}/pkgconfig_client ${CMAKE_CXX_COMPILER}
    ${STAGE}/prefix/${CMAKE_INSTALL_LIBDIR} ${STAGE}/pkgconfig_client)
set_tests_properties(install.cmake_client install.pkgconfig_client PROPERTIES
  FIXTURES_REQUIRED installed)
