#include "platform/kernel/waitable.h"

#include <windows.h>

#include <algorithm>

#include "platform/kernel/api_result.h"
#include "platform/kernel/clock.h"

namespace platform {

Deadline::Deadline(DWORD milliseconds) {
  if (milliseconds != INFINITE) due_ = CurrentClock().TickMilliseconds() + milliseconds;
}

bool Deadline::HasCome() const {
  return due_ && CurrentClock().TickMilliseconds() >= *due_;
}

std::chrono::milliseconds Deadline::Left() const {
  constexpr std::chrono::milliseconds kLongest = std::chrono::hours(24);
  if (!due_) return kLongest;
  const std::uint64_t now = CurrentClock().TickMilliseconds();
  const std::uint64_t left = now >= *due_ ? 0 : *due_ - now;
  return std::min(std::chrono::milliseconds(left), kLongest);
}

namespace {

std::shared_ptr<Waitable> FindWaitable(HANDLE handle) {
  HandleKind kind{};
  if (!Handles().KindOf(handle, kind)) return nullptr;
  if (kind != HandleKind::kThread && kind != HandleKind::kMutex) return nullptr;
  return std::static_pointer_cast<Waitable>(Handles().Find(kind, handle));
}

}  // namespace
}  // namespace platform

extern "C" DWORD WINAPI WaitForSingleObject(HANDLE object, DWORD milliseconds) try {
  const std::shared_ptr<platform::Waitable> waitable = platform::FindWaitable(object);
  if (waitable == nullptr) {
    ::SetLastError(ERROR_INVALID_HANDLE);
    return WAIT_FAILED;
  }
  return waitable->Wait(platform::Deadline(milliseconds));
} catch (...) {
  return platform::FailedCall(WAIT_FAILED);
}
