# What makes a fault in memory harder to exploit: guarded stacks, checked calls of the C library,
# addresses that nobody can guess, and tables of the linker that are read-only once a program runs.
# tools/check_hardening looks for all of it in what is installed.
if(NOT QG_SANITIZE)
  add_compile_options(-fstack-protector-strong)
  # Needs an optimiser.
  add_compile_options("$<$<CONFIG:Release,RelWithDebInfo>:-D_FORTIFY_SOURCE=2>")
  # GCC 12 takes a short wide string that is moved for one longer than its buffer and warns of the
  # call; the call's check, which is what counts, is right.
  add_compile_options(-Wno-attribute-warning)
endif()
if(WIN32)
  # Brings in the library with the guard.
  add_link_options(-fstack-protector-strong)
  add_link_options(-Wl,--dynamicbase,--nxcompat,--high-entropy-va)
else()
  include(CheckPIESupported)
  check_pie_supported()
  add_link_options(-Wl,-z,relro,-z,now,-z,noexecstack)
endif()
