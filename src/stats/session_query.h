// Reads the finished sessions of some users in an interval from the log. Any thread.
#pragma once

#include <string>
#include <vector>

#include "stats/date_interval.h"
#include "storage/database.h"

namespace quillgate {

// The users whose sessions are listed. `isEveryone`: nobody of the logon system is left out.
struct UserFilter {
  std::vector<std::wstring> names;
  bool isEveryone = false;
};

// The statement that selects StartDate, User, Seconds, BytesRecv and BytesSent of the sessions
// that began within the interval. Throws DBerror for a name that cannot stand in a statement.
std::wstring SessionStatement(const DateInterval& interval, const UserFilter& filter);

// The rows in the order of the database. Throws DBerror, also when the database stays busy and
// when the statement is too long for the names of the filter. If those are all names, the sessions
// of the interval are read and those of other users left out.
DbRows ReadSessions(Database& database, const DateInterval& interval, const UserFilter& filter);

}  // namespace quillgate
