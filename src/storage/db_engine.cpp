#include "storage/db_engine.h"

#include <array>
#include <utility>

#include "storage/db_error.h"
#include "storage/multibyte.h"
#include "storage/result_table.h"

namespace quillgate {
namespace {

// Result codes with a treatment of their own; all others end the statement.
constexpr int kOk = 0;
constexpr int kBusy = 5;            // the file is in use by another user of it
constexpr int kLocked = 6;          // a table is
constexpr int kSchemaChanged = 17;  // under the statement
constexpr int kMisuse = 21;         // only reopening mends the connection

using StatementBuffer = std::array<char, DbEngine::kMaxStatement + 1>;

[[noreturn]] void Throw(const wchar_t* message) {
  throw DBerror(message, DBerror::kOwnFailure);
}

// A statement that would be cut, at its end or at a NUL inside of it, may still be a valid one that
// does something else; so it is refused.
StatementBuffer NarrowStatement(const std::wstring& sql) {
  if (sql.find(L'\0') != std::wstring::npos) Throw(L"The query holds an invalid character.");
  StatementBuffer narrow;
  const int bytes =
      ::WideCharToMultiByte(CP_ACP, 0, sql.data(), static_cast<int>(sql.size()), narrow.data(),
                            static_cast<int>(narrow.size() - 1), nullptr, nullptr);
  if (bytes == 0 && !sql.empty()) Throw(L"Query too long.");
  narrow[static_cast<std::size_t>(bytes)] = '\0';
  return narrow;
}

}  // namespace

void DbEngine::Open(const std::wstring& path) {
  const std::string narrow = Narrow(path);
  if (narrow.size() >= MAX_PATH) Throw(L"The path of the database is too long.");
  EngineMessage message(library_);
  connection_ = library_.open(narrow.c_str(), 0, message.Out());
  if (connection_ == nullptr) throw DBerror(message.Text(), DBerror::kOwnFailure);
  path_ = path;
  Prepare();
}

void DbEngine::Prepare() {
  // One of its own statements that has the connection reopened must not begin it all anew.
  if (preparing_) return;
  preparing_ = true;
  // A transaction in which the file was reopened is over, whatever its owner knows of that.
  const Transaction interrupted = std::exchange(transaction_, Transaction::kNone);
  prepare_(*this);
  transaction_ = interrupted;
  preparing_ = false;
}

void DbEngine::Close() noexcept {
  if (connection_ != nullptr) library_.close(connection_);
  connection_ = nullptr;
}

void DbEngine::Reopen() {
  const std::wstring path = path_;
  Close();
  ::Sleep(kRetryMilliseconds);
  Open(path);
}

bool DbEngine::Run(const std::wstring& sql, DbRows& rows) {
  // A reopening that failed may succeed by now: the file was put back, the disk is there again.
  if (connection_ == nullptr && !path_.empty()) Open(path_);
  if (connection_ == nullptr) Throw(L"No database open.");
  if (transaction_ == Transaction::kNone) return RunOnce(sql, rows);
  if (transaction_ == Transaction::kBroken) Throw(L"The transaction has failed.");
  // Until the statement has succeeded: a later one must not run outside of the transaction, and the
  // commit must not make permanent what is only a part.
  transaction_ = Transaction::kBroken;
  if (!RunOnce(sql, rows)) throw BusyError();
  transaction_ = Transaction::kOpen;
  return true;
}

bool DbEngine::RunOnce(const std::wstring& sql, DbRows& rows) {
  if (sql.size() > kMaxStatement) Throw(L"Query too long.");
  rows.clear();
  const StatementBuffer narrow = NarrowStatement(sql);
  ResultTable table(library_);
  if (!Fetch(narrow.data(), table)) return false;
  table.CopyTo(rows, kMaxValue);
  return true;
}

bool DbEngine::RunAtOnce(const std::wstring& sql, DbRows& rows) {
  rows.clear();
  if (connection_ == nullptr || transaction_ != Transaction::kNone) return false;
  const StatementBuffer narrow = NarrowStatement(sql);
  ResultTable table(library_);
  std::wstring message;
  if (table.Get(connection_, narrow.data(), message) != kOk) return false;
  table.CopyTo(rows, kMaxValue);
  return true;
}

bool DbEngine::Fetch(const char* sql, ResultTable& table) {
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    std::wstring message;
    const int code = table.Get(connection_, sql, message);
    if (code == kOk) return true;
    if (code == kBusy || code == kLocked || code == kSchemaChanged) {
      ::Sleep(kRetryMilliseconds);
    } else if (code == kMisuse) {
      Reopen();
      // What the transaction had done so far went with the old connection.
      if (transaction_ != Transaction::kNone) throw DBerror(message, code);
    } else {
      throw DBerror(message, code);
    }
  }
  return false;
}

void DbEngine::Begin() {
  DbRows none;
  if (!Run(L"BEGIN IMMEDIATE;", none)) throw BusyError();
  transaction_ = Transaction::kOpen;
}

void DbEngine::Commit() {
  DbRows none;
  Run(L"COMMIT;", none);
  transaction_ = Transaction::kNone;
}

void DbEngine::RollBack() noexcept {
  transaction_ = Transaction::kNone;
  if (connection_ == nullptr) return;
  DbRows none;
  try {
    if (Run(L"ROLLBACK;", none)) return;
  } catch (const std::exception&) {
    // Most likely the engine has undone everything already; reopening makes it certain.
  }
  try {
    Reopen();
  } catch (const std::exception&) {
    // Without a connection the statements to come say that no database is open.
  }
}

}  // namespace quillgate
