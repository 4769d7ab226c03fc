#include "platform/user/timer_list.h"

#include <algorithm>

#include "platform/kernel/clock.h"

namespace platform {
namespace {

constexpr UINT kShortestPeriod = 10;         // USER_TIMER_MINIMUM
constexpr UINT kLongestPeriod = 0x7FFFFFFF;  // USER_TIMER_MAXIMUM

}  // namespace

std::vector<TimerList::Timer>::iterator TimerList::Locate(HWND window, UINT_PTR id) {
  return std::ranges::find_if(
      timers_, [&](const Timer& each) { return each.window == window && each.id == id; });
}

void TimerList::Set(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC callback) {
  Kill(window, id);
  const std::uint64_t period = std::clamp(milliseconds, kShortestPeriod, kLongestPeriod);
  const std::uint64_t due = CurrentClock().TickMilliseconds() + period;
  timers_.push_back({window, id, period, due, callback});
}

UINT_PTR TimerList::NewThreadTimerId() {
  do {
    ++lastThreadTimerId_;
  } while (lastThreadTimerId_ == 0 || Exists(nullptr, lastThreadTimerId_));
  return lastThreadTimerId_;
}

bool TimerList::Kill(HWND window, UINT_PTR id) {
  const auto found = Locate(window, id);
  if (found == timers_.end()) return false;
  timers_.erase(found);
  return true;
}

bool TimerList::Exists(HWND window, UINT_PTR id) const {
  return std::ranges::any_of(
      timers_, [&](const Timer& each) { return each.window == window && each.id == id; });
}

void TimerList::KillAllOf(HWND window) {
  std::erase_if(timers_, [&](const Timer& each) { return each.window == window; });
}

std::optional<MSG> TimerList::Take(const MessageFilter& filter, bool remove) {
  const std::uint64_t now = CurrentClock().TickMilliseconds();
  Timer* longest = nullptr;
  for (Timer& each : timers_) {
    if (each.due > now || !filter.Passes(each.window, WM_TIMER)) continue;
    if (longest == nullptr || each.due < longest->due) longest = &each;
  }
  if (longest == nullptr) return std::nullopt;
  // Counted in whole periods from the start, so that the timer does not drift.
  if (remove) longest->due += ((now - longest->due) / longest->period + 1) * longest->period;
  MSG message{};
  message.hwnd = longest->window;
  message.message = WM_TIMER;
  message.wParam = longest->id;
  message.lParam = reinterpret_cast<LPARAM>(longest->callback);
  message.time = static_cast<DWORD>(now);
  return message;
}

std::optional<std::chrono::milliseconds> TimerList::UntilNext(const MessageFilter& filter) const {
  std::optional<std::uint64_t> due;
  for (const Timer& each : timers_) {
    if (filter.Passes(each.window, WM_TIMER)) due = std::min(due.value_or(each.due), each.due);
  }
  if (!due.has_value()) return std::nullopt;
  const std::uint64_t now = CurrentClock().TickMilliseconds();
  return std::chrono::milliseconds(*due > now ? *due - now : 0);
}

}  // namespace platform
