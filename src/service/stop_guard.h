// Sees to it that a stop ends: when the main routine has not ended in time after a stop request,
// because one of its windows waits for a display that does not answer, what the stop still owes the
// machine is done without it. Made by the control handler; runs on a thread of its own.
#pragma once

#include <windows.h>

#include <functional>

#include "service/worker_thread.h"

namespace quillgate {

class StopGuard final : public WorkerThread {
 public:
  // With what the program takes afterwards, well below the time in which a stop must be over.
  static constexpr DWORD kPatienceMilliseconds = 15'000;

  // `mainRoutine` is a mutex that the main routine owns while it runs. `onOverdue` is called when
  // that takes too long; it may not return. Throws std::runtime_error.
  StopGuard(HANDLE mainRoutine, std::function<void()> onOverdue)
      : mainRoutine_(mainRoutine), onOverdue_(std::move(onOverdue)) {}
  ~StopGuard() override { Join(); }

 private:
  unsigned Run() noexcept override;

  const HANDLE mainRoutine_;
  const std::function<void()> onOverdue_;
};

}  // namespace quillgate
