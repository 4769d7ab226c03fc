#include "storage/db_engine.h"

#include <array>

#include "encoding/multibyte.h"
#include "storage/db_error.h"
#include "storage/result_table.h"

namespace quillgate {
namespace {

// Result codes that are handled separately; all others end the statement.
constexpr int kOk = 0;
constexpr int kBusy = 5;            // the file is in use by another connection
constexpr int kLocked = 6;          // a table is in use
constexpr int kSchemaChanged = 17;  // the schema changed during the statement
constexpr int kMisuse = 21;         // the connection must be reopened

using StatementBuffer = std::array<char, DbEngine::kMaxStatement + 1>;

[[noreturn]] void Throw(const wchar_t* message) {
  throw DBerror(message, DBerror::kOwnFailure);
}

// A statement that is truncated, at its end or at an embedded NUL, may still be valid and do
// something else. It is therefore refused.
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
  // A statement of the preparation may reopen the connection, which must not start the preparation
  // again.
  if (preparing_) return;
  preparing_ = true;
  prepare_(*this);
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
  // A reopening that failed may succeed now, for example when the disk is available again.
  if (connection_ == nullptr && !path_.empty()) Open(path_);
  return Run(sql, rows, true);
}

bool DbEngine::RunInPlace(const std::wstring& sql, DbRows& rows) {
  return Run(sql, rows, false);
}

bool DbEngine::Run(const std::wstring& sql, DbRows& rows, bool mayReopen) {
  if (connection_ == nullptr) Throw(L"No database open.");
  if (sql.size() > kMaxStatement) Throw(L"Query too long.");
  rows.clear();
  const StatementBuffer narrow = NarrowStatement(sql);
  ResultTable table(library_);
  if (!Fetch(narrow.data(), table, mayReopen)) return false;
  table.CopyTo(rows, kMaxValue);
  return true;
}

bool DbEngine::RunAtOnce(const std::wstring& sql, DbRows& rows) {
  rows.clear();
  if (connection_ == nullptr) return false;
  const StatementBuffer narrow = NarrowStatement(sql);
  ResultTable table(library_);
  std::wstring message;
  if (table.Get(connection_, narrow.data(), message) != kOk) return false;
  table.CopyTo(rows, kMaxValue);
  return true;
}

bool DbEngine::Fetch(const char* sql, ResultTable& table, bool mayReopen) {
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    std::wstring message;
    const int code = table.Get(connection_, sql, message);
    if (code == kOk) return true;
    if (code == kBusy || code == kLocked || code == kSchemaChanged) {
      ::Sleep(kRetryMilliseconds);
    } else if (code == kMisuse && mayReopen) {
      Reopen();
    } else {
      throw DBerror(message, code);
    }
  }
  // A busy engine is no error here. Deliberate, see docs/behaviour.md.
  return false;
}

}  // namespace quillgate
