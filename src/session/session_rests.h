// What the rows of finished sessions leave out: the part of a second that each of them was longer
// than its whole seconds. Sessions of less than a second would otherwise cost nothing, however many
// there are. In memory alone: a new process begins without. Owned by the session object and used
// under its lock.
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

  // Of the user's sessions that began on one of these days.
  std::uint64_t Milliseconds(std::wstring_view user, const DayRange& days) const;

 private:
  using RestsByDay = std::map<DATE, std::uint64_t>;
  std::map<std::wstring, RestsByDay, std::less<>> rests_;
};

}  // namespace quillgate
