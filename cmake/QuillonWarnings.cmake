# One target carries the warnings of all our code; errors for developers and CI only.
add_library(quillon_warnings INTERFACE)
target_compile_options(quillon_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict> -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align -Wformat=2 -Wimplicit-fallthrough)
if(QUILLON_WERROR)
  target_compile_options(quillon_warnings INTERFACE -Werror)
endif()
