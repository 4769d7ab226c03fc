#include "platform/net/counter_base.h"

#include <algorithm>

namespace platform {
namespace {

// A limit, since containers create and remove links with ever new names.
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

// A new reading of the same link. A counter that decreased has started anew, but not the others: on
// some cards a single counter has so few bits that it wraps.
void Follow(const InterfaceCounters& counters, InterfaceCounters& last, InterfaceCounters& base) {
  for (const auto each : kCounters) {
    if (counters.*each < last.*each) base.*each += last.*each;
  }
  last = counters;
}

}  // namespace

InterfaceCounters CounterBase::Read(const LinkReading& reading) {
  if (links_.size() >= kMostNames && !links_.contains(reading.name)) EvictOldest();
  const auto [entry, isNew] = links_.try_emplace(reading.name);
  Tracked& tracked = entry->second;
  if (!isNew && (tracked.index != reading.index || tracked.removal != 0)) {
    tracked.base = Sum(tracked.base, tracked.last);
    tracked.last = {};
  }
  tracked.index = reading.index;
  tracked.removal = 0;
  Follow(reading.counters, tracked.last, tracked.base);
  return Sum(tracked.base, tracked.last);
}

void CounterBase::Came(const LinkReading& reading) {
  const auto found = links_.find(reading.name);
  if (found == links_.end()) return;
  Tracked& tracked = found->second;
  if (tracked.index == reading.index && tracked.removal == 0) {
    Follow(reading.counters, tracked.last, tracked.base);
    return;
  }
  // The sum stays the same. The base may wrap below 0; adding the counters wraps it back.
  for (const auto each : kCounters)
    tracked.base.*each += tracked.last.*each - reading.counters.*each;
  tracked.last = reading.counters;
  tracked.index = reading.index;
  tracked.removal = 0;
}

void CounterBase::Went(const LinkReading& last) {
  const auto found = links_.find(last.name);
  if (found == links_.end()) return;
  Read(last);
  MarkRemoved(found->second);
}

void CounterBase::Missed(std::wstring_view name) {
  const auto found = links_.find(name);
  if (found != links_.end()) MarkRemoved(found->second);
}

InterfaceCounters CounterBase::Latest(const LinkReading& reading) const {
  const auto found = links_.find(reading.name);
  if (found == links_.end()) return reading.counters;
  return Sum(found->second.base, found->second.last);
}

void CounterBase::MarkRemoved(Tracked& tracked) {
  if (tracked.removal == 0) tracked.removal = ++removals_;
}

void CounterBase::EvictOldest() {
  // The removal 0 wraps and sorts last.
  const auto order = [](const auto& each) { return each.second.removal - 1; };
  const auto oldest = std::ranges::min_element(links_, {}, order);
  if (oldest->second.removal != 0) links_.erase(oldest);
}

}  // namespace platform
