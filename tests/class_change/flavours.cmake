# The class of an object changes in place; no optimiser and no sanitizer may
# object. Each flavour is built and run by CTest.
function(displaylist_class_change_test COMPILER COMPILER_PATH FLAVOUR FLAGS)
  set(SOURCE_DIR ${CMAKE_CURRENT_SOURCE_DIR}/class_change)
  set(BINARY_DIR ${CMAKE_CURRENT_BINARY_DIR}/class_change/${COMPILER}-${FLAVOUR})
  add_test(NAME class_change.${COMPILER}.${FLAVOUR}
    COMMAND ${CMAKE_CTEST_COMMAND} --build-and-test ${SOURCE_DIR} ${BINARY_DIR}
      --build-generator Ninja --build-noclean
      --build-options -DCMAKE_CXX_COMPILER=${COMPILER_PATH} -DFLAVOUR=${FLAGS}
        -DLUMEN=$<TARGET_FILE:lumen> -DCMAKE_CXX_COMPILER_LAUNCHER=$<$<BOOL:${CCACHE}>:${CCACHE}>
      --test-command ${BINARY_DIR}/class_change)
  set_tests_properties(class_change.${COMPILER}.${FLAVOUR} PROPERTIES TIMEOUT 600 COST 1000
    ENVIRONMENT "${CCACHE_SETTINGS}")
endfunction()

function(displaylist_class_change_tests COMPILER PROGRAM LTO_FLAGS)
  find_program(${COMPILER}_PATH ${PROGRAM})
  if(NOT ${COMPILER}_PATH)
    message(WARNING "${PROGRAM} is missing: class changes are not tested with it")
    return()
  endif()
  displaylist_class_change_test(${COMPILER} ${${COMPILER}_PATH} lto "-O3 ${LTO_FLAGS}")
  displaylist_class_change_test(${COMPILER} ${${COMPILER}_PATH} sanitizers
    "-O1 -g1 -fsanitize=address,undefined -fno-sanitize-recover=all")
endfunction()

file(GLOB CLASS_CHANGE_TESTS CONFIGURE_DEPENDS class_change/*_test.cpp)
if(CLASS_CHANGE_TESTS)
  displaylist_class_change_tests(gcc g++ "-flto=auto")
  displaylist_class_change_tests(clang clang++ "-flto -fuse-ld=lld")
endif()
