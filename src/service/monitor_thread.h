// Makes the rules take effect: runs one enforcement cycle at once and then every twentieth time it
// wakes, which is once a second. A cycle that fails is logged and the next one runs all the same.
#pragma once

#include <string>

#include "service/event_log.h"
#include "service/worker_thread.h"
#include "session/session_log.h"

namespace quillgate {

class MonitorThread final : public WorkerThread {
 public:
  MonitorThread(SessionLog& session, EventLog& events) : session_(session), events_(events) {}
  ~MonitorThread() override { Join(); }

  // After Stop: waits until the cycle that may be running is over. None begins afterwards.
  void AwaitCycle();

 private:
  unsigned Run() noexcept override;
  void RunCycle() noexcept;
  // Of the exception that is being handled.
  void LogFailure() noexcept;

  SessionLog& session_;
  EventLog& events_;
  CriticalSection cycle_;
  // The failure that was logged last; the same one is not logged at every cycle.
  std::wstring lastFailure_;
};

}  // namespace quillgate
