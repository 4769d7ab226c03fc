// Enforces the rules: runs one enforcement cycle immediately and then one every twenty wake-ups;
// the thread wakes once a second. A failed cycle is logged, and the next one runs all the same.
#pragma once

#include <functional>
#include <string>

#include "service/event_log.h"
#include "service/worker_thread.h"
#include "session/session_log.h"

namespace quillgate {

class MonitorThread final : public WorkerThread {
 public:
  // Called around each cycle on the monitor's thread, `after` also when the cycle failed. They must
  // not throw; either may be empty.
  struct Callbacks {
    std::function<void()> before;
    std::function<void()> after;
  };

  MonitorThread(SessionLog& session, EventLog& events, Callbacks callbacks)
      : session_(session), events_(events), callbacks_(std::move(callbacks)) {}
  ~MonitorThread() override { Join(); }

  // Call after Stop: waits until a running cycle is over. No cycle begins afterwards.
  void AwaitCycle();

 private:
  unsigned Run() noexcept override;
  void RunCycle() noexcept;
  // Logs the exception that is being handled.
  void LogFailure() noexcept;

  SessionLog& session_;
  EventLog& events_;
  const Callbacks callbacks_;
  CriticalSection cycle_;
  // The failure logged last; the same one is not logged at every cycle.
  std::wstring lastFailure_;
};

}  // namespace quillgate
