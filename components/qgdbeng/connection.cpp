#include "connection.h"

#include <climits>
#include <cstring>

#include "statement_text.h"

namespace quillgate::engine {

namespace {

constexpr int kPrimaryCode = 0xff;

bool AddNames(sqlite3_stmt* statement, int columns, TableBuilder& table) {
  for (int column = 0; column < columns; ++column) {
    const char* const name = sqlite3_column_name(statement, column);
    if (name == nullptr || !table.Add(name, std::strlen(name))) return false;
  }
  return true;
}

bool AddRow(sqlite3_stmt* statement, int columns, TableBuilder& table) {
  for (int column = 0; column < columns; ++column) {
    const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
    // No text for a value that is not NULL: out of memory.
    if (text == nullptr && sqlite3_column_type(statement, column) != SQLITE_NULL) return false;
    const auto bytes = static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
    if (!table.Add(text, bytes)) return false;
  }
  return true;
}

// Until it is reset, a statement keeps its read transaction open.
struct StatementResetter {
  void operator()(sqlite3_stmt* statement) const { sqlite3_reset(statement); }
};

// Steps to the end. The table has column names only when there are rows.
int ReadRows(sqlite3_stmt* statement, TableBuilder& table, ResultShape& shape) {
  int code = sqlite3_step(statement);
  if (code != SQLITE_ROW) return code;
  // Read after the first step: a statement that was recompiled after a schema change may have other
  // columns.
  shape.columns = sqlite3_column_count(statement);
  if (!AddNames(statement, shape.columns, table)) return SQLITE_NOMEM;
  for (; code == SQLITE_ROW; code = sqlite3_step(statement)) {
    if (shape.rows == INT_MAX) return SQLITE_TOOBIG;
    if (!AddRow(statement, shape.columns, table)) return SQLITE_NOMEM;
    ++shape.rows;
  }
  return code;
}

}  // namespace

int Connection::Failure(int code, std::string& message) {
  // The code may be this library's own, without an error of SQLite.
  const bool isDatabaseError = (sqlite3_errcode(database_.get()) & kPrimaryCode) == code;
  message = isDatabaseError ? sqlite3_errmsg(database_.get()) : sqlite3_errstr(code);
  // The file was moved away under a rollback journal: only reopening helps.
  const bool moved = sqlite3_extended_errcode(database_.get()) == SQLITE_READONLY_DBMOVED;
  return isDatabaseError && moved ? SQLITE_MISUSE : code;
}

int Connection::Compile(std::string_view sql, StatementHandle& statement, std::string& message) {
  if (HoldsMoreThanOneStatement(sql)) {
    message = "more than one statement";
    return SQLITE_ERROR;
  }
  sqlite3_stmt* compiled = nullptr;
  const int code = sqlite3_prepare_v3(database_.get(), sql.data(), static_cast<int>(sql.size()),
                                      SQLITE_PREPARE_PERSISTENT, &compiled, nullptr);
  statement.reset(compiled);
  return code == SQLITE_OK ? code : Failure(code & kPrimaryCode, message);
}

int Connection::Execute(std::string_view sql, TableBuilder& table, ResultShape& shape,
                        std::string& message) {
  if (sql.size() > INT_MAX) return Failure(SQLITE_TOOBIG, message);
  // Writes to a file that was moved away would be lost without an error.
  if (HasMoved(database_.get())) {
    message = "the database file was moved or replaced";
    return SQLITE_MISUSE;
  }
  StatementHandle compiled;
  sqlite3_stmt* statement = cache_.Find(sql);
  if (statement == nullptr) {
    const int code = Compile(sql, compiled, message);
    if (code != SQLITE_OK) return code;
    statement = compiled.get();
  }
  if (statement == nullptr) return SQLITE_OK;  // nothing but blanks and comments

  std::unique_ptr<sqlite3_stmt, StatementResetter> running(statement);
  const int code = ReadRows(statement, table, shape) & kPrimaryCode;
  // Another process held the locks of the write-ahead log during all of SQLite's attempts.
  if (code == SQLITE_PROTOCOL) return Failure(SQLITE_BUSY, message);
  if (code != SQLITE_DONE) return Failure(code, message);
  running.reset();
  if (compiled != nullptr && IsRowStatement(sql)) cache_.Keep(sql, std::move(compiled));
  return SQLITE_OK;
}

int Connection::Run(std::string_view sql, TableBuilder& table, ResultShape& shape,
                    std::string& message) {
  const std::lock_guard lock(mutex_);
  latestCode_ = Execute(sql, table, shape, message);
  return latestCode_;
}

int Connection::LatestCode() {
  const std::lock_guard lock(mutex_);
  return latestCode_;
}

int Connection::ChangedRows() {
  const std::lock_guard lock(mutex_);
  return sqlite3_changes(database_.get());
}

bool Connection::InTransaction() {
  const std::lock_guard lock(mutex_);
  return sqlite3_get_autocommit(database_.get()) == 0;
}

}  // namespace quillgate::engine
