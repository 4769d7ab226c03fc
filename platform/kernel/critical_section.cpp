#include <windows.h>

#include <cstdlib>
#include <mutex>
#include <new>

namespace {

std::recursive_mutex& MutexOf(LPCRITICAL_SECTION section) {
  return *static_cast<std::recursive_mutex*>(section->opaque);
}

// Win32 documents no failure, so a process that is out of memory terminates here.
std::recursive_mutex* NewMutex() noexcept {
  try {
    return new std::recursive_mutex;
  } catch (const std::bad_alloc&) {
    std::abort();
  }
}

}  // namespace

extern "C" {

void WINAPI InitializeCriticalSection(LPCRITICAL_SECTION section) {
  section->opaque = NewMutex();
}

void WINAPI EnterCriticalSection(LPCRITICAL_SECTION section) {
  MutexOf(section).lock();
}

BOOL WINAPI TryEnterCriticalSection(LPCRITICAL_SECTION section) {
  return MutexOf(section).try_lock() ? TRUE : FALSE;
}

void WINAPI LeaveCriticalSection(LPCRITICAL_SECTION section) {
  MutexOf(section).unlock();
}

void WINAPI DeleteCriticalSection(LPCRITICAL_SECTION section) {
  delete &MutexOf(section);
  section->opaque = nullptr;
}

}  // extern "C"
