# The shared libraries export their own names and nothing else. What the
# standard library's templates leave behind is everybody's.
add_test(NAME exports.displaylist
  COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/exports/only_own_symbols $<TARGET_FILE:displaylist>
    "^(DL::|DrawableJunk|ZtFsStream|LM_|std::)")
add_test(NAME exports.lumen
  COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/exports/only_own_symbols $<TARGET_FILE:lumen>
    "^((void )?(lumen|std)::|LM_|LD_|LumenHeap|LUMEN|solveTrigEquation)")
add_test(NAME exports.files
  COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/exports/only_own_symbols $<TARGET_FILE:displaylist_files>
    "^((void )?(files|DL|std)::|ZtFsStream|LM_)")
