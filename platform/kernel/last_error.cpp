#include <windows.h>

namespace {

thread_local DWORD lastError = NO_ERROR;

}  // namespace

extern "C" {

DWORD WINAPI GetLastError() {
  return lastError;
}

void WINAPI SetLastError(DWORD error) {
  lastError = error;
}

}  // extern "C"
