# What `cmake --install` puts where, and how others find it afterwards.
include(CMakePackageConfigHelpers)
set(PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/displaylist)

# The tree may be moved as a whole: what is installed finds the libraries
# relative to itself.
file(RELATIVE_PATH LIBDIR_FROM_BINDIR
  ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
set_target_properties(displaylist displaylist_files lumen PROPERTIES INSTALL_RPATH "$ORIGIN")
install(TARGETS displaylist displaylist_files lumen EXPORT displaylistTargets)
if(TARGET dlview)
  set_target_properties(dlview PROPERTIES INSTALL_RPATH "$ORIGIN/${LIBDIR_FROM_BINDIR}")
  install(TARGETS dlview)
endif()

install(DIRECTORY displaylist DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  FILES_MATCHING PATTERN *.h PATTERN *_p.h EXCLUDE)
# The folders in lumen hold internal headers only.
file(GLOB LUMEN_HEADERS CONFIGURE_DEPENDS lumen/*.h)
list(FILTER LUMEN_HEADERS EXCLUDE REGEX "_p\\.h$")
install(FILES ${LUMEN_HEADERS} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/lumen)
file(GLOB FILES_HEADERS CONFIGURE_DEPENDS files/*.h)
list(FILTER FILES_HEADERS EXCLUDE REGEX "_p\\.h$")
install(FILES ${FILES_HEADERS} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/files)
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})

install(EXPORT displaylistTargets NAMESPACE displaylist:: DESTINATION ${PACKAGE_DIR})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/displaylistConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES cmake/package/displaylistConfig.cmake
  ${CMAKE_BINARY_DIR}/displaylistConfigVersion.cmake DESTINATION ${PACKAGE_DIR})

set(PKGCONFIG_DIR ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH PREFIX_FROM_PKGCONFIG_DIR
  ${CMAKE_INSTALL_PREFIX}/${PKGCONFIG_DIR} ${CMAKE_INSTALL_PREFIX})
foreach(LIBRARY IN ITEMS displaylist displaylist-files lumen)
  configure_file(cmake/package/${LIBRARY}.pc.in ${CMAKE_BINARY_DIR}/${LIBRARY}.pc @ONLY)
  install(FILES ${CMAKE_BINARY_DIR}/${LIBRARY}.pc DESTINATION ${PKGCONFIG_DIR})
endforeach()
