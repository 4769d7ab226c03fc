#include "service/stop_guard.h"

#include <exception>

namespace quillgate {

unsigned StopGuard::Run() noexcept {
  const DWORD result = ::WaitForSingleObject(mainRoutine_, kPatienceMilliseconds);
  if (result == WAIT_TIMEOUT) {
    try {
      onOverdue_();
    } catch (const std::exception&) {
      // Without memory even for the last lines of the log; nothing else is owed.
    }
  } else {
    ::ReleaseMutex(mainRoutine_);
  }
  SignalCompletion();
  return 0;
}

}  // namespace quillgate
