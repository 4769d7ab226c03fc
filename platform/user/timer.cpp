// SetTimer and KillTimer.
#include "platform/kernel/api_result.h"
#include "platform/user/thread_queue.h"
#include "platform/user/window.h"

using namespace platform;

UINT_PTR WINAPI SetTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC callback) try {
  if (!BelongsToCaller(window)) return 0;
  TimerList& timers = CurrentQueue()->Timers();
  // A thread's own timer gets a number of the system's, unless it replaces one that runs.
  const bool needsNumber = window == nullptr && !timers.Exists(nullptr, id);
  const UINT_PTR used = needsNumber ? timers.NewThreadTimerId() : id;
  timers.Set(window, used, milliseconds, callback);
  return used != 0 ? used : 1;
} catch (...) {
  return FailedCall(UINT_PTR{0});
}

BOOL WINAPI KillTimer(HWND window, UINT_PTR id) try {
  if (!BelongsToCaller(window)) return FALSE;
  if (CurrentQueue()->Timers().Kill(window, id)) return TRUE;
  ::SetLastError(ERROR_INVALID_PARAMETER);
  return FALSE;
} catch (...) {
  return FailedCall(FALSE);
}
