#include <windows.h>

#include <chrono>
#include <thread>

#include "platform/kernel/api_result.h"
#include "platform/kernel/clock.h"

extern "C" {

void WINAPI GetLocalTime(LPSYSTEMTIME time) try {
  using std::chrono::milliseconds;
  using std::chrono::seconds;
  const auto now = platform::CurrentClock().Now();
  const auto whole = std::chrono::floor<seconds>(now);
  const std::tm fields = platform::LocalFields(whole);
  *time = {};
  time->wYear = static_cast<WORD>(fields.tm_year + 1900);
  time->wMonth = static_cast<WORD>(fields.tm_mon + 1);
  time->wDayOfWeek = static_cast<WORD>(fields.tm_wday);
  time->wDay = static_cast<WORD>(fields.tm_mday);
  time->wHour = static_cast<WORD>(fields.tm_hour);
  time->wMinute = static_cast<WORD>(fields.tm_min);
  // SYSTEMTIME has no leap seconds, which some time zone files have.
  time->wSecond = static_cast<WORD>(fields.tm_sec > 59 ? 59 : fields.tm_sec);
  time->wMilliseconds = static_cast<WORD>(std::chrono::floor<milliseconds>(now - whole).count());
} catch (...) {
  platform::ErrorOfException();
}

DWORD WINAPI GetTickCount() {
  return static_cast<DWORD>(platform::CurrentClock().TickMilliseconds());
}

void WINAPI Sleep(DWORD milliseconds) {
  if (milliseconds == 0) {
    std::this_thread::yield();
    return;
  }
  do {  // NOLINT(bugprone-infinite-loop)
    platform::CurrentClock().Sleep(std::chrono::milliseconds(milliseconds));
  } while (milliseconds == INFINITE);
}

}  // extern "C"
