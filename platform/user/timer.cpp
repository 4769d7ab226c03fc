// SetTimer and KillTimer.
#include "platform/kernel/api_result.h"
#include "platform/user/thread_queue.h"
#include "platform/user/window.h"

using namespace platform;

UINT_PTR WINAPI SetTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC callback) try {
  if (!BelongsToCaller(window)) return 0;
  TimerList& timers = CurrentQueue()->Timers();
  // A timer of the thread itself gets a new identifier, unless it replaces a running one.
  const bool needsId = window == nullptr && !timers.Exists(nullptr, id);
  const UINT_PTR timerId = needsId ? timers.NewThreadTimerId() : id;
  timers.Set(window, timerId, milliseconds, callback);
  return timerId != 0 ? timerId : 1;
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
