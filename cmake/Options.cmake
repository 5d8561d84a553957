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

# What the shared libraries are compiled with besides: they call their own functions
# directly, which nobody replaces at run time.
add_library(displaylist_library_options INTERFACE)
target_link_libraries(displaylist_library_options INTERFACE displaylist_options)
target_compile_options(displaylist_library_options INTERFACE -fno-semantic-interposition)
target_link_options(displaylist_library_options INTERFACE -Wl,-Bsymbolic-functions)

find_program(CCACHE ccache)
# It keeps nothing made with precompiled headers unless told not to look into them.
set(CCACHE_SETTINGS CCACHE_SLOPPINESS=pch_defines,time_macros)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env ${CCACHE_SETTINGS} ${CCACHE})
endif()
