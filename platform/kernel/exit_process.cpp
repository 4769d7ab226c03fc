#include <windows.h>

#include <unistd.h>

#include <cstdio>

// Does not run destructors of static objects: other threads may still use the objects.
extern "C" void WINAPI ExitProcess(UINT exitCode) {
  std::fflush(stdout);
  ::_exit(static_cast<int>(exitCode));
}
