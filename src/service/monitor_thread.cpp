#include "service/monitor_thread.h"

namespace quillgate {
namespace {

constexpr DWORD kWakeMilliseconds = 1000;
constexpr DWORD kWakesPerCycle = 20;

}  // namespace

void MonitorThread::AwaitCycle() {
  const CriticalSectionLock hold(cycle_);
}

unsigned MonitorThread::Run() noexcept {
  for (DWORD wake = 0; !IsStopRequested(); ++wake) {
    if (wake % kWakesPerCycle == 0) RunCycle();
    ::Sleep(kWakeMilliseconds);
  }
  SignalCompletion();
  return 0;
}

void MonitorThread::RunCycle() noexcept {
  const CriticalSectionLock hold(cycle_);
  if (IsStopRequested()) return;
  if (callbacks_.before) callbacks_.before();
  try {
    session_.RunEnforcementCycle();
    lastFailure_.clear();
  } catch (...) {
    LogFailure();
  }
  if (callbacks_.after) callbacks_.after();
}

void MonitorThread::LogFailure() noexcept {
  try {
    const std::wstring failure = CurrentExceptionText();
    if (failure == lastFailure_) return;
    events_.LogEvent(failure);
    lastFailure_ = failure;
  } catch (...) {
    // Out of memory: the failure is not logged, and the next cycle runs.
  }
}

}  // namespace quillgate
