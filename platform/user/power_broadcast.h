// WM_POWERBROADCAST to the windows of the process, for a thread that has no windows.
#pragma once

#include <windows.h>

#include <condition_variable>
#include <initializer_list>
#include <memory>
#include <mutex>
#include <stop_token>

namespace platform {

// The handling of a broadcast by windows of other threads. Any thread.
class PowerAnswers {
 public:
  void Expect();
  void Arrive();
  // Returns when all have arrived; after 5 s, or when `ended` is requested, in any case.
  void Await(const std::stop_token& ended);

 private:
  std::mutex mutex_;
  std::condition_variable_any complete_;
  int missing_ = 0;
};

// Delivers the events, one after the other, to every top-level window when its thread next
// retrieves messages; to those of the caller at once. Does not wait. A refusal of
// PBT_APMQUERYSUSPEND is logged: the machine sleeps all the same.
std::shared_ptr<PowerAnswers> BroadcastPowerEvents(std::initializer_list<WPARAM> events);

}  // namespace platform
