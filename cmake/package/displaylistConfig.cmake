include(${CMAKE_CURRENT_LIST_DIR}/displaylistTargets.cmake)
