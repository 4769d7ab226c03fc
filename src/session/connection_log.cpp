#include "session/connection_log.h"

#include "storage/db_transaction.h"

namespace quillgate {
namespace {

constexpr std::wstring_view kFinishedSessions = L"ConnLog";
constexpr std::wstring_view kRunningSession = L"CrashLog";

// Throws DBerror for a user name that cannot be used in a statement.
std::wstring InsertStatement(std::wstring_view table, const SessionRecord& session) {
  std::wstring sql = L"INSERT INTO ";
  sql += table;
  sql += L" VALUES (" + SqlText(session.user);
  sql += L", " + SqlText(std::to_wstring(session.seconds));
  sql += L", " + SqlText(std::to_wstring(session.bytesSent));
  sql += L", " + SqlText(std::to_wstring(session.bytesReceived));
  sql += L", " + SqlText(FormatTimestamp(session.startDate)) + L");";
  if (!FitsStatement(sql)) throw DBerror(L"Query too long.", DBerror::kOwnFailure);
  return sql;
}

}  // namespace

void ConnectionLog::KeepCrashed() {
  // While a finished session is unwritten, CrashLog holds an older snapshot of that session.
  if (unwritten_.empty()) recoveryDue_ = true;
}

ConnectionLog::Batch ConnectionLog::Due(const std::optional<SessionRecord>& running) {
  Batch batch{.recovers = recoveryDue_, .finished = {}, .running = {}};
  std::erase_if(unwritten_, [&batch](const SessionRecord& session) {
    try {
      batch.finished.push_back(InsertStatement(kFinishedSessions, session));
      return false;
    } catch (const DBerror&) {
      batch.refused.Note();
      return true;
    }
  });
  try {
    if (running) batch.running = InsertStatement(kRunningSession, *running);
  } catch (const DBerror&) {
    batch.refused.Note();
  }
  return batch;
}

void ConnectionLog::Write(const Batch& batch) {
  DbTransaction transaction(database_);
  if (batch.recovers) database_.DbExecute(L"INSERT INTO ConnLog SELECT * FROM CrashLog;");
  for (const std::wstring& statement : batch.finished)
    database_.DbExecute(statement);
  database_.DbExecute(L"DELETE FROM CrashLog;");
  if (!batch.running.empty()) database_.DbExecute(batch.running);
  transaction.Commit();
}

void ConnectionLog::Forget(const Batch& batch) {
  // Sessions that finished after the batch was built follow those of the batch.
  unwritten_.erase(unwritten_.begin(),
                   unwritten_.begin() + static_cast<std::ptrdiff_t>(batch.finished.size()));
  if (batch.recovers) recoveryDue_ = false;
}

UnwrittenUsage ConnectionLog::UnwrittenOf(std::wstring_view user) const {
  UnwrittenUsage usage;
  for (const SessionRecord& each : unwritten_) {
    if (each.user != user) continue;
    usage.seconds += each.seconds;
    usage.bytesReceived += each.bytesReceived;
  }
  return usage;
}

}  // namespace quillgate
