// Watches the user sessions at the machine's seat and its sleep: logind's, or the simulated
// machine's. Whoever watches owns the watch; the observer is called on a thread of the watch. Any
// thread.
#pragma once

#include <functional>
#include <memory>
#include <stop_token>

#include "platform/account/seat_state.h"

namespace platform {

class SessionObserver {
 public:
  virtual ~SessionObserver() = default;

  // Called once the seat has been read, and whenever it has been read again, which does not mean
  // that anything has changed. Not called while logind does not answer.
  virtual void OnSeat(const SeatState& state) = 0;

  // The machine sleeps when this has returned, or after some seconds (InhibitDelayMaxSec in
  // logind.conf). To return soon when `ended` is requested: somebody waits for the watch to end.
  virtual void OnSuspend(const std::stop_token& ended) { static_cast<void>(ended); }

  // The machine is awake again. `announced`: OnSuspend was called before.
  virtual void OnResume(bool announced) { static_cast<void>(announced); }
};

// The destructor ends the watch: no call of the observer runs then or later. Not to be destroyed in
// a call of the observer.
class SessionWatch {
 public:
  virtual ~SessionWatch() = default;
};

enum class SleepNotice { kNone, kBeforeAndAfter };

// Starts a watch. The observer must outlive it. OnSuspend and OnResume are called for
// kBeforeAndAfter only. Throws std::system_error when there are no resources for a thread.
std::unique_ptr<SessionWatch> WatchSessions(SessionObserver& observer, SleepNotice sleep);

using SessionWatchSource =
    std::function<std::unique_ptr<SessionWatch>(SessionObserver& observer, SleepNotice sleep)>;
void SetSessionWatchSource(SessionWatchSource source);  // empty: logind again

}  // namespace platform
