#include "session/session_rests.h"

#include <cmath>

namespace quillgate {

void SessionRests::Add(const SessionRecord& session) {
  // Longer than every period.
  constexpr DATE kDaysKept = 40;
  if (session.restMilliseconds == 0) return;
  RestsByDay& days = rests_[session.user];
  const DATE day = std::trunc(session.startDate);
  days[day] += session.restMilliseconds;
  days.erase(days.begin(), days.lower_bound(day - kDaysKept));
}

std::uint64_t SessionRests::Milliseconds(std::wstring_view user, const DayRange& days) const {
  const auto found = rests_.find(user);
  if (found == rests_.end()) return 0;
  std::uint64_t milliseconds = 0;
  for (const auto& [day, rest] : found->second) {
    if (day >= std::trunc(days.first) && day <= std::trunc(days.last)) milliseconds += rest;
  }
  return milliseconds;
}

}  // namespace quillgate
