#include "storage/database.h"

#include <array>

#include "encoding/multibyte.h"
#include "storage/db_engine.h"
#include "storage/db_transaction.h"

namespace quillgate {
namespace {

constexpr std::wstring_view kFileName = L"quillgate.dat";

// All are run at every open. The statement for a table that exists fails; that failure is ignored.
constexpr const wchar_t* kTables[] = {
    L"CREATE TABLE Settings (Key, Value);",
    L"CREATE TABLE Users_Quillgate (Name, Password, TimeLimitEnabled, TimeLimit, TimeLimitPeriod, "
    L"DLLimitEnabled, DLLimit, DLLimitPeriod, ConnectHours, Privileges);",
    L"CREATE TABLE Users_Windows (Name, Password, TimeLimitEnabled, TimeLimit, TimeLimitPeriod, "
    L"DLLimitEnabled, DLLimit, DLLimitPeriod, ConnectHours, Privileges);",
    L"CREATE TABLE Users_None (Name, Password, TimeLimitEnabled, TimeLimit, TimeLimitPeriod, "
    L"DLLimitEnabled, DLLimit, DLLimitPeriod, ConnectHours, Privileges);",
    L"CREATE TABLE ConnHours (User, Weekday, Hour);",
    L"CREATE TABLE ConnLog (User, Seconds, BytesSent, BytesRecv, StartDate);",
    L"CREATE TABLE CrashLog (User, Seconds, BytesSent, BytesRecv, StartDate);",
};

// Totals and lists of the log read only an index, for one user or for all users. The other indexes
// hold only the column that is looked up, so that rows with equal keys are returned in insertion
// order.
constexpr const wchar_t* kIndexes[] = {
    L"CREATE INDEX IF NOT EXISTS ConnLogByUser ON ConnLog "
    L"(User, StartDate, Seconds, BytesSent, BytesRecv);",
    L"CREATE INDEX IF NOT EXISTS ConnLogByDate ON ConnLog "
    L"(StartDate, User, Seconds, BytesSent, BytesRecv);",
    L"CREATE INDEX IF NOT EXISTS SettingsByKey ON Settings (Key);",
    L"CREATE INDEX IF NOT EXISTS UsersQuillgateByName ON Users_Quillgate (Name);",
    L"CREATE INDEX IF NOT EXISTS UsersWindowsByName ON Users_Windows (Name);",
    L"CREATE INDEX IF NOT EXISTS UsersNoneByName ON Users_None (Name);",
};

void RunIgnoringFailure(DbEngine& engine, const wchar_t* sql) {
  DbRows none;
  try {
    engine.Run(sql, none);
  } catch (const std::exception&) {
    // Statements that need a missing table fail themselves.
  }
}

// Also called when a file is reopened: it may have been deleted and created anew.
void MakeTables(DbEngine& engine) {
  for (const wchar_t* sql : kTables)
    RunIgnoringFailure(engine, sql);
  for (const wchar_t* sql : kIndexes)
    RunIgnoringFailure(engine, sql);
}

bool CannotBeQuoted(std::wstring_view value) {
  constexpr std::wstring_view kRefused(L"'\0", 2);
  if (value.find_first_of(kRefused) != std::wstring_view::npos) return true;
  // Windows code pages map look-alikes, such as U+02BC, to a plain apostrophe.
  return Narrow(value).find('\'') != std::string::npos;
}

}  // namespace

std::wstring DatabasePath() {
  std::array<wchar_t, MAX_PATH> buffer;
  const DWORD length =
      ::GetModuleFileNameW(nullptr, buffer.data(), static_cast<DWORD>(buffer.size()));
  std::wstring path(buffer.data(), length);
  path.resize(path.rfind(L'\\') + 1);
  return path.append(kFileName);
}

std::wstring SqlText(std::wstring_view value) {
  if (CannotBeQuoted(value)) {
    throw DBerror(L"The text holds a character that cannot be stored.", DBerror::kOwnFailure);
  }
  std::wstring quoted;
  quoted.reserve(value.size() + 2);
  return quoted.append(1, L'\'').append(value).append(1, L'\'');
}

bool FitsStatement(std::wstring_view sql) {
  return sql.size() <= DbEngine::kMaxStatement && Narrow(sql).size() <= DbEngine::kMaxStatement;
}

Database::Database(std::wstring path) : path_(std::move(path)) {}

Database::~Database() = default;

void Database::DbOpen() {
  auto engine = std::make_unique<DbEngine>(MakeTables);
  open_ = false;
  engine->Open(path_);
  engine_ = std::move(engine);
  open_ = true;
}

void Database::DbClose() {
  engine_.reset();
}

void Database::DbQuery(std::wstring sql, DbRows& rows) {
  Run(sql, rows);
}

void Database::DbExecute(std::wstring sql) {
  DbRows discarded;
  Run(sql, discarded);
}

bool Database::Run(const std::wstring& sql, DbRows& rows) {
  Opened();
  const CriticalSectionLock lock(lock_);
  if (transaction_ == nullptr) return Engine().Run(sql, rows);
  transaction_->Run(sql, rows);
  return true;
}

bool Database::RunAtOnce(const std::wstring& sql, DbRows& rows) {
  // Longer than any statement takes that does not wait for the file.
  constexpr DWORD kLockTimeoutMilliseconds = 100;
  const TimedCriticalSectionLock lock(lock_, kLockTimeoutMilliseconds);
  const bool isFree = lock.IsHeld() && transaction_ == nullptr && engine_ != nullptr;
  return isFree && engine_->RunAtOnce(sql, rows);
}

Database& Database::Opened() {
  if (!open_) DbOpen();
  return *this;
}

DbEngine& Database::Engine() {
  if (engine_ == nullptr) throw DBerror(L"No database open.", DBerror::kOwnFailure);
  return *engine_;
}

}  // namespace quillgate
