// The fractions of seconds that the rows of finished sessions lack. Without them, sessions shorter
// than a second would cost nothing, however many there are. Kept in memory only: a new process
// starts without them. Owned by the session object and used under its lock.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "session/session_meter.h"
#include "usage/usage_total.h"

namespace quillgate {

class SessionRests {
 public:
  void Add(const SessionRecord& session);

  // The total of the user's sessions that began on one of these days.
  std::uint64_t Milliseconds(std::wstring_view user, const DayRange& days) const;

 private:
  using RestsByDay = std::map<DATE, std::uint64_t>;
  std::map<std::wstring, RestsByDay, std::less<>> rests_;
};

}  // namespace quillgate
