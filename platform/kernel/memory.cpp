#include <windows.h>

#include <cstdlib>

#include "platform/kernel/log.h"

// There is one heap: HeapAlloc, FormatMessageW and CommandLineToArgvW return blocks of the C
// runtime's malloc.
namespace {

char processHeap;

bool IsHeap(HANDLE heap) {
  return heap == &processHeap;
}

}  // namespace

extern "C" {

HANDLE WINAPI GetProcessHeap() {
  return &processHeap;
}

LPVOID WINAPI HeapAlloc(HANDLE heap, DWORD flags, SIZE_T bytes) {
  if (!IsHeap(heap)) return nullptr;
  if ((flags & ~HEAP_ZERO_MEMORY) != 0) {
    platform::LogLine("HeapAlloc: unsupported flags");
    return nullptr;
  }
  const SIZE_T size = bytes == 0 ? 1 : bytes;
  return (flags & HEAP_ZERO_MEMORY) != 0 ? std::calloc(1, size) : std::malloc(size);
}

BOOL WINAPI HeapFree(HANDLE heap, DWORD, LPVOID memory) {
  if (!IsHeap(heap)) {
    ::SetLastError(ERROR_INVALID_HANDLE);
    return FALSE;
  }
  std::free(memory);
  return TRUE;
}

HLOCAL WINAPI LocalFree(HLOCAL memory) {
  std::free(memory);
  return nullptr;
}

}  // extern "C"
