#include "settings/limit_entry.h"

namespace quillgate {

LimitEntry EntryOf(const User::Limit& limit) {
  return {limit.enabled, std::to_wstring(limit.amount), static_cast<int>(limit.period)};
}

bool IsAccepted(const LimitEntry& entry) {
  return !entry.enabled || kLimitRange.Contains(ParseNumber(entry.amount));
}

User::Limit LimitOf(const LimitEntry& entry, const User::Limit& before) {
  User::Limit limit = before;
  limit.enabled = entry.enabled;
  const std::uint32_t amount = ParseNumber(entry.amount);
  if (kLimitRange.Contains(amount)) limit.amount = static_cast<std::int32_t>(amount);
  if (entry.period >= 0) limit.period = static_cast<LimitPeriod>(entry.period);
  return limit;
}

}  // namespace quillgate
