// The log of sessions: finished ones in the table ConnLog, the running one mirrored in CrashLog, so
// that a crash costs no more than what happened since the last snapshot. Every operation is one
// transaction. A finished session that the database would not take is kept and written with the
// next operation that succeeds. Owned by the session object and used under its lock.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "session/session_meter.h"
#include "storage/database.h"

namespace quillgate {

// What finished sessions of one user add up to that are not in the database yet.
struct UnwrittenUsage {
  std::uint64_t seconds = 0;
  std::uint64_t bytesReceived = 0;
};

class ConnectionLog {
 public:
  explicit ConnectionLog(Database& database) : database_(database) {}

  // Each throws DBerror. A user name that cannot stand in a statement fails for good: nothing of
  // that session is kept.

  // The session is over: writes it to ConnLog and empties CrashLog.
  void Finish(const SessionRecord& session);

  // Replaces what CrashLog holds by the running session.
  void Snapshot(const SessionRecord& session);

  // Writes what an earlier failure left to be written, and empties CrashLog.
  void Settle() { Apply({}); }

  // Moves what a crash left in CrashLog to ConnLog.
  void Recover();

  bool HasUnwritten() const { return recoveryDue_ || !unwritten_.empty(); }
  UnwrittenUsage UnwrittenOf(std::wstring_view user) const;

 private:
  struct Unwritten {
    SessionRecord session;
    std::wstring statement;
  };

  // Everything that is due, then CrashLog holds what `snapshot` inserts, which may be empty.
  void Apply(const std::wstring& snapshot);

  Database& database_;
  std::vector<Unwritten> unwritten_;
  bool recoveryDue_ = false;
};

}  // namespace quillgate
