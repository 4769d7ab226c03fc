// A limit as the controls of the users page hold it. Plain values; pure.
#pragma once

#include <string>

#include "accounts/user.h"
#include "frame/number_range.h"

namespace quillgate {

inline constexpr NumberRange kLimitRange{1, 999'999};

struct LimitEntry {
  bool enabled = false;
  std::wstring amount;
  int period = 0;  // index in the list of day, week, month; negative: none selected

  bool operator==(const LimitEntry&) const = default;
};

LimitEntry EntryOf(const User::Limit& limit);

// Whether the amount is accepted: any text is while the limit is off.
bool IsAccepted(const LimitEntry& entry);

// The limit that was entered. What is not a number in the range, or no period, stays as it was.
User::Limit LimitOf(const LimitEntry& entry, const User::Limit& before);

}  // namespace quillgate
