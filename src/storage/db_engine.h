// One connection to the database file through the engine library. Owned by Database, which holds
// its own lock around every call.
#pragma once

#include <functional>
#include <string>

#include "storage/db_row.h"
#include "storage/engine_library.h"

namespace quillgate {

class DbEngine {
 public:
  // Maximum length of a statement, in characters and in bytes of its narrow form.
  static constexpr std::size_t kMaxStatement = 1023;
  // Maximum length of a value in a result, in characters.
  static constexpr std::size_t kMaxValue = 511;
  static constexpr int kAttempts = 20;
  static constexpr DWORD kRetryMilliseconds = 100;

  // Prepares the file, which may be new, after every opening. Must not throw.
  using Preparation = std::function<void(DbEngine&)>;

  // Loads the library; throws DBerror.
  explicit DbEngine(Preparation prepare) : prepare_(std::move(prepare)) {}
  ~DbEngine() { Close(); }
  DbEngine(const DbEngine&) = delete;
  DbEngine& operator=(const DbEngine&) = delete;

  // Throws DBerror with the engine's error text. The next statement then reopens the file that was
  // open before.
  void Open(const std::wstring& path);
  void Close() noexcept;

  // Runs one statement. False, with no rows, when the engine stayed busy for all attempts. Every
  // other failure throws DBerror and returns no rows. A connection that the engine reports as
  // unusable is reopened.
  bool Run(const std::wstring& sql, DbRows& rows);

  // As Run, but never reopens the connection. For the statements of a transaction, which a new
  // connection would not know.
  bool RunInPlace(const std::wstring& sql, DbRows& rows);

  // Makes one attempt and returns whether the engine ran the statement. Neither waits nor reopens.
  // Throws DBerror for a statement that can never run, or for rows that cannot be copied.
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
  std::wstring path_;  // empty until an Open has succeeded
  bool preparing_ = false;
};

}  // namespace quillgate
