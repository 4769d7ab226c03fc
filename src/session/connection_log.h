// The log of sessions: finished ones in the table ConnLog, and the snapshot of the running one in
// CrashLog, so that a crash loses only what happened since the last snapshot. A finished session
// that could not be written is kept and written with the next batch that succeeds. Owned by the
// session object and used under its lock, except Write, which may wait for the database: it is
// called outside of the lock, by one thread at a time.
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

// The total of one user's finished sessions that are not in the database yet.
struct UnwrittenUsage {
  std::uint64_t seconds = 0;
  std::uint64_t bytesReceived = 0;
};

class ConnectionLog {
 public:
  // The statements of one transaction, from the state of one moment.
  struct Batch {
    bool recovers = false;
    std::vector<std::wstring> finished;
    std::wstring running;  // empty: CrashLog is only cleared
    // The DBerror of a session that can never be written, because its user's name cannot be used in
    // a statement. A finished one is dropped; it would block the others for ever.
    FirstFailure refused{};

    bool IsToBeWritten() const { return !refused.HasFailed() || !finished.empty(); }
  };

  explicit ConnectionLog(Database& database) : database_(database) {}

  // Keeps a finished session until it is written.
  void Keep(const SessionRecord& session) { unwritten_.push_back(session); }
  // Schedules the recovery: the rows that a crash left in CrashLog are moved to ConnLog.
  void KeepCrashed();

  // Everything that is to be written, and the session that CrashLog holds afterwards.
  Batch Due(const std::optional<SessionRecord>& running);
  // Writes the whole batch or nothing. Throws DBerror.
  void Write(const Batch& batch);
  // Removes a batch that was written.
  void Forget(const Batch& batch);

  bool HasUnwritten() const { return recoveryDue_ || !unwritten_.empty(); }
  UnwrittenUsage UnwrittenOf(std::wstring_view user) const;

 private:
  Database& database_;
  std::vector<SessionRecord> unwritten_;
  bool recoveryDue_ = false;
};

}  // namespace quillgate
