// The one way to the database: statements as text, results as rows of text, one lock around every
// statement. The process has one Database, made by service/; a test makes its own. DbQuery and
// DbExecute may be called from any thread; DbOpen before any other thread uses the database,
// DbClose after the last one has stopped.
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

// The value between apostrophes, ready to stand in a statement. A value that cannot stand there
// because it holds an apostrophe or a NUL throws DBerror(-1): it never reaches the engine.
std::wstring SqlText(std::wstring_view value);

// Whether the statement is short enough for the engine, as it stands and in narrow text.
bool FitsStatement(std::wstring_view sql);

class Database {
 public:
  explicit Database(std::wstring path = DatabasePath());
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  // Loads the engine, opens the file and makes the tables that are missing. Throws DBerror; a later
  // statement then tries again.
  void DbOpen();

  // Closes the connection and releases the engine. Statements after it throw "No database open.".
  // Closing what is not open does nothing.
  void DbClose();

  // Runs one statement of at most 1023 characters and puts its rows in place of what `rows` held.
  // Opens the database first when it is not open. An engine that stays busy for 20 attempts (2 s)
  // is no failure: the statement then yields no rows. Every other failure is a DBerror, and leaves
  // `rows` empty or, when it was found before the engine was asked, as it was.
  void DbQuery(std::wstring sql, DbRows& rows);
  void DbExecute(std::wstring sql);

  // As DbQuery, for callers that must know: whether the engine carried the statement out; false
  // when it stayed busy to the end.
  bool Run(const std::wstring& sql, DbRows& rows);

  // For callers that must not wait: false when the database is not open, somebody else uses it, or
  // the engine does not carry the statement out at the first attempt.
  bool RunAtOnce(const std::wstring& sql, DbRows& rows);

 private:
  friend class DbTransaction;
  Database& Opened();
  DbEngine& Engine();

  std::wstring path_;
  std::unique_ptr<DbEngine> engine_;
  CriticalSection lock_;
  DbTransaction* transaction_ = nullptr;  // the one that holds the lock
  bool open_ = false;
};

}  // namespace quillgate
