# Warnings of every target; all of them are errors.
add_library(qg_warnings INTERFACE)
target_compile_options(qg_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Werror -Wshadow -Wconversion -Wno-sign-conversion
  -Wnon-virtual-dtor -Woverloaded-virtual -Wimplicit-fallthrough
  # FARPROC is converted to the entry point's own type, as GetProcAddress intends.
  -Wno-cast-function-type)
