# What every target of the project is compiled with.
add_library(displaylist_options INTERFACE)
target_include_directories(displaylist_options INTERFACE $<BUILD_INTERFACE:${CMAKE_SOURCE_DIR}>)
target_compile_options(displaylist_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
  -Woverloaded-virtual
  # The same bits on every compiler: a * b + c is never fused.
  -ffp-contract=off
  # GCC 12 warns of overlapping copies inside its own string class.
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
if(DISPLAYLIST_WERROR)
  target_compile_options(displaylist_options INTERFACE -Werror)
endif()
if(DISPLAYLIST_SANITIZE)
  target_compile_options(displaylist_options INTERFACE
    -fsanitize=${DISPLAYLIST_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(displaylist_options INTERFACE -fsanitize=${DISPLAYLIST_SANITIZE})
endif()

find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()
