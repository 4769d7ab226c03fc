// Makes sure that a stop completes. If the main routine has not ended in time after a stop request,
// because one of its windows waits for a display that does not respond, the guard calls a function
// that does the rest of the stop. Created by the control handler; runs on a thread of its own.
#pragma once

#include <windows.h>

#include <functional>

#include "service/worker_thread.h"

namespace quillgate {

class StopGuard final : public WorkerThread {
 public:
  // Leaves enough time for the rest of the stop before the time limit of a stop.
  static constexpr DWORD kPatienceMilliseconds = 15'000;

  // `mainRoutine` is a mutex that the main routine owns while it runs. `onOverdue` is called when
  // the main routine takes too long; it need not return. Throws std::runtime_error.
  StopGuard(HANDLE mainRoutine, std::function<void()> onOverdue)
      : mainRoutine_(mainRoutine), onOverdue_(std::move(onOverdue)) {}
  ~StopGuard() override { Join(); }

 private:
  unsigned Run() noexcept override;

  const HANDLE mainRoutine_;
  const std::function<void()> onOverdue_;
};

}  // namespace quillgate
