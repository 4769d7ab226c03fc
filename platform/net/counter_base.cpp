#include "platform/net/counter_base.h"

#include <algorithm>

namespace platform {
namespace {

// Where containers come and go, so do links with names that never return.
constexpr std::size_t kMostNames = 1024;

constexpr std::uint64_t InterfaceCounters::*kCounters[] = {
    &InterfaceCounters::bytesReceived, &InterfaceCounters::bytesSent,
    &InterfaceCounters::packetsReceived, &InterfaceCounters::packetsSent};

InterfaceCounters Sum(const InterfaceCounters& left, const InterfaceCounters& right) {
  InterfaceCounters sum;
  for (const auto each : kCounters)
    sum.*each = left.*each + right.*each;
  return sum;
}

// The same link as before. A counter that fell has begun anew, and it alone: of some cards only one
// of them has so few bits that it wraps.
void Follow(const InterfaceCounters& counters, InterfaceCounters& last, InterfaceCounters& base) {
  for (const auto each : kCounters) {
    if (counters.*each < last.*each) base.*each += last.*each;
  }
  last = counters;
}

}  // namespace

InterfaceCounters CounterBase::Read(const LinkReading& reading) {
  if (known_.size() >= kMostNames && !known_.contains(reading.name)) ForgetOldest();
  const auto [entry, isNew] = known_.try_emplace(reading.name);
  Known& known = entry->second;
  if (!isNew && (known.index != reading.index || known.wentAs != 0)) {
    known.base = Sum(known.base, known.last);
    known.last = {};
  }
  known.index = reading.index;
  known.wentAs = 0;
  Follow(reading.counters, known.last, known.base);
  return Sum(known.base, known.last);
}

void CounterBase::Came(const LinkReading& reading) {
  const auto found = known_.find(reading.name);
  if (found == known_.end()) return;
  Known& known = found->second;
  if (known.index == reading.index && known.wentAs == 0) {
    Follow(reading.counters, known.last, known.base);
    return;
  }
  // The sum stays as it was. The base may be less than 0 then, which the next sum makes good.
  for (const auto each : kCounters)
    known.base.*each += known.last.*each - reading.counters.*each;
  known.last = reading.counters;
  known.index = reading.index;
  known.wentAs = 0;
}

void CounterBase::Went(const LinkReading& last) {
  const auto found = known_.find(last.name);
  if (found == known_.end()) return;
  Read(last);
  MarkGone(found->second);
}

void CounterBase::Missed(std::wstring_view name) {
  const auto found = known_.find(name);
  if (found != known_.end()) MarkGone(found->second);
}

InterfaceCounters CounterBase::Latest(const LinkReading& reading) const {
  const auto found = known_.find(reading.name);
  if (found == known_.end()) return reading.counters;
  return Sum(found->second.base, found->second.last);
}

void CounterBase::MarkGone(Known& known) {
  if (known.wentAs == 0) known.wentAs = ++gone_;
}

void CounterBase::ForgetOldest() {
  const auto order = [](const auto& each) { return each.second.wentAs - 1; };  // 0 becomes the last
  const auto oldest = std::ranges::min_element(known_, {}, order);
  if (oldest->second.wentAs != 0) known_.erase(oldest);
}

}  // namespace platform
