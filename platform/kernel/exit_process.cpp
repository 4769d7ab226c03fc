#include <windows.h>

#include <unistd.h>

#include <cstdio>

// Destructors of static objects are not run: threads that use them may be stopped anywhere.
extern "C" void WINAPI ExitProcess(UINT exitCode) {
  std::fflush(stdout);
  ::_exit(static_cast<int>(exitCode));
}
