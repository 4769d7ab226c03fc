// The log of sessions: finished ones in the table ConnLog, the running one mirrored in CrashLog, so
// that a crash costs no more than what happened since the last snapshot. A finished session that
// the database would not take is kept and written with the next batch that succeeds. Owned by the
// session object: everything but Write is used under its lock, and Write, which may wait for the
// database, outside of it and by one thread at a time.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "session/first_failure.h"
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
  // The statements of one transaction, of one moment's state.
  struct Batch {
    bool recovers = false;
    std::vector<std::wstring> finished;
    std::wstring running;  // empty: CrashLog is emptied
    // The DBerror of a session that can never be written: its user's name cannot stand in a
    // statement. A finished one has been given up, or it would hold up the others for ever.
    FirstFailure refused{};

    bool IsToBeWritten() const { return !refused.HasFailed() || !finished.empty(); }
  };

  explicit ConnectionLog(Database& database) : database_(database) {}

  // The session is over and is to be written.
  void Keep(const SessionRecord& session) { unwritten_.push_back(session); }
  // What a crash left in CrashLog is to be moved to ConnLog.
  void KeepCrashed();

  // Everything that is to be written, and the session that CrashLog shall hold afterwards.
  Batch Due(const std::optional<SessionRecord>& running);
  // Writes all of the batch or nothing. Throws DBerror.
  void Write(const Batch& batch);
  // The batch was written.
  void Forget(const Batch& batch);

  bool HasUnwritten() const { return recoveryDue_ || !unwritten_.empty(); }
  UnwrittenUsage UnwrittenOf(std::wstring_view user) const;

 private:
  Database& database_;
  std::vector<SessionRecord> unwritten_;
  bool recoveryDue_ = false;
};

}  // namespace quillgate
