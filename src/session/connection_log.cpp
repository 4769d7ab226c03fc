#include "session/connection_log.h"

namespace quillgate {
namespace {

constexpr std::wstring_view kFinishedSessions = L"ConnLog";
constexpr std::wstring_view kRunningSession = L"CrashLog";

// Throws DBerror for a user name that cannot stand between apostrophes.
std::wstring InsertStatement(std::wstring_view table, const SessionRecord& session) {
  std::wstring sql = L"INSERT INTO ";
  sql += table;
  sql += L" VALUES (" + SqlText(session.user);
  sql += L", " + SqlText(std::to_wstring(session.seconds));
  sql += L", " + SqlText(std::to_wstring(session.bytesSent));
  sql += L", " + SqlText(std::to_wstring(session.bytesReceived));
  sql += L", " + SqlText(FormatTimestamp(session.startDate)) + L");";
  return sql;
}

}  // namespace

void ConnectionLog::Finish(const SessionRecord& session) {
  unwritten_.push_back({session, InsertStatement(kFinishedSessions, session)});
  Apply({});
}

void ConnectionLog::Snapshot(const SessionRecord& session) {
  Apply(InsertStatement(kRunningSession, session));
}

void ConnectionLog::Recover() {
  // With a finished session still unwritten, CrashLog holds an older state of that same session.
  if (unwritten_.empty()) recoveryDue_ = true;
  Apply({});
}

UnwrittenUsage ConnectionLog::UnwrittenOf(std::wstring_view user) const {
  UnwrittenUsage usage;
  for (const Unwritten& each : unwritten_) {
    if (each.session.user != user) continue;
    usage.seconds += each.session.seconds;
    usage.bytesReceived += each.session.bytesReceived;
  }
  return usage;
}

void ConnectionLog::Apply(const std::wstring& snapshot) {
  DbTransaction transaction(database_);
  if (recoveryDue_) database_.DbExecute(L"INSERT INTO ConnLog SELECT * FROM CrashLog;");
  for (const Unwritten& each : unwritten_)
    database_.DbExecute(each.statement);
  database_.DbExecute(L"DELETE FROM CrashLog;");
  if (!snapshot.empty()) database_.DbExecute(snapshot);
  transaction.Commit();
  unwritten_.clear();
  recoveryDue_ = false;
}

}  // namespace quillgate
