#include "service/stop_guard.h"

#include <exception>

namespace quillgate {

unsigned StopGuard::Run() noexcept {
  const DWORD result = ::WaitForSingleObject(mainRoutine_, kPatienceMilliseconds);
  if (result == WAIT_TIMEOUT) {
    try {
      onOverdue_();
    } catch (const std::exception&) {
      // Out of memory for the last lines of the log. All other work is done.
    }
  } else {
    ::ReleaseMutex(mainRoutine_);
  }
  SignalCompletion();
  return 0;
}

}  // namespace quillgate
