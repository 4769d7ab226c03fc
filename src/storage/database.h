// All access to the database: statements are text, results are rows of text, and one lock
// serialises the statements. The process has one Database, created by service/; tests create their
// own. DbQuery and DbExecute may be called from any thread. DbOpen must be called before any other
// thread uses the database, DbClose after the last one has stopped.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "handles/critical_section.h"
#include "storage/db_error.h"
#include "storage/db_row.h"

namespace quillgate {

class DbEngine;
class DbTransaction;

// "quillgate.dat" in the folder of the executable.
std::wstring DatabasePath();

// Returns the value in apostrophes, for use in a statement. Nothing is escaped: a value with an
// apostrophe or a NUL throws DBerror(-1). Deliberate, see docs/behaviour.md.
std::wstring SqlText(std::wstring_view value);

// Whether the statement is within the engine's limit, both in characters and in bytes of its narrow
// form.
bool FitsStatement(std::wstring_view sql);

class Database {
 public:
  explicit Database(std::wstring path = DatabasePath());
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  // Loads the engine, opens the file and creates missing tables. Throws DBerror; the next statement
  // then tries again.
  void DbOpen();

  // Closes the connection and releases the engine. Later statements throw "No database open.". Does
  // nothing when the database is not open.
  void DbClose();

  // Runs one statement of at most 1023 characters and replaces the contents of `rows` with its
  // result. Opens the database first when it is not open. An engine that stays busy for 20 attempts
  // (2 s) yields no rows and no error. Deliberate, see docs/behaviour.md. Every other failure
  // throws DBerror; `rows` is then empty, or unchanged when the failure was detected before the
  // engine was called.
  void DbQuery(std::wstring sql, DbRows& rows);
  void DbExecute(std::wstring sql);

  // As DbQuery, for callers that must know whether the engine ran the statement: false when it
  // stayed busy for all attempts.
  bool Run(const std::wstring& sql, DbRows& rows);

  // For callers that must not wait: false when the database is not open, another thread or a
  // transaction uses it, or the engine does not run the statement at the first attempt.
  bool RunAtOnce(const std::wstring& sql, DbRows& rows);

 private:
  friend class DbTransaction;
  Database& Opened();
  DbEngine& Engine();

  std::wstring path_;
  std::unique_ptr<DbEngine> engine_;
  CriticalSection lock_;
  DbTransaction* transaction_ = nullptr;  // holds lock_; null: none
  bool open_ = false;
};

}  // namespace quillgate
