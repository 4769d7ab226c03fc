#include "usage/counter_extension.h"

namespace quillgate {
namespace {

// One less than the counter's range. Deliberate, see docs/behaviour.md.
constexpr std::uint64_t kWrap = 0xFFFFFFFFu;

}  // namespace

std::uint64_t CounterExtension::Extend(DWORD raw) {
  const CriticalSectionLock lock(lock_);
  if (raw < last_) base_ += kWrap;
  last_ = raw;
  return base_ + raw;
}

CounterExtension& SentBytesExtension() {
  static CounterExtension extension;
  return extension;
}

CounterExtension& ReceivedBytesExtension() {
  static CounterExtension extension;
  return extension;
}

}  // namespace quillgate
