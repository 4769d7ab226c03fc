// One connection to the database file through the engine library. Owned by Database, which holds
// its lock around every call.
#pragma once

#include <functional>
#include <string>

#include "storage/db_row.h"
#include "storage/engine_library.h"

namespace quillgate {

class DbEngine {
 public:
  // Characters of the longest statement, and bytes of its narrow form.
  static constexpr std::size_t kMaxStatement = 1023;
  // Characters of the longest value that a result may hold.
  static constexpr std::size_t kMaxValue = 511;
  static constexpr int kAttempts = 20;
  static constexpr DWORD kRetryMilliseconds = 100;

  // Makes a file usable that may be new; called after every opening, and must not throw.
  using Preparation = std::function<void(DbEngine&)>;

  // Loads the library; throws DBerror.
  explicit DbEngine(Preparation prepare) : prepare_(std::move(prepare)) {}
  ~DbEngine() { Close(); }
  DbEngine(const DbEngine&) = delete;
  DbEngine& operator=(const DbEngine&) = delete;

  // Throws DBerror with the engine's text; a file that was open before is then opened again by the
  // next statement.
  void Open(const std::wstring& path);
  void Close() noexcept;

  // Runs one statement. False, with no rows, when the engine stayed busy for all attempts; every
  // other failure throws DBerror. No row is left behind by a failure. A connection that only
  // reopening mends is reopened.
  bool Run(const std::wstring& sql, DbRows& rows);

  // The same on the connection as it is, for the statements of a transaction: another connection
  // would know nothing of it.
  bool RunInPlace(const std::wstring& sql, DbRows& rows);

  // One attempt: whether the engine carried the statement out. Neither waits nor reopens. Throws
  // DBerror for a statement that can never run, or rows it cannot take.
  bool RunAtOnce(const std::wstring& sql, DbRows& rows);

  // Throws DBerror; the next statement then tries again.
  void Reopen();

 private:
  bool Run(const std::wstring& sql, DbRows& rows, bool mayReopen);
  bool Fetch(const char* sql, class ResultTable& table, bool mayReopen);
  void Prepare();

  const Preparation prepare_;
  EngineLibrary library_;
  EngineLibrary::Connection* connection_ = nullptr;
  std::wstring path_;  // empty before the first opening that succeeded
  bool preparing_ = false;
};

}  // namespace quillgate
