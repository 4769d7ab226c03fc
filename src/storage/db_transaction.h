// Several statements that take effect together or not at all. The object holds the database lock
// during its lifetime, so keep it short; transactions must not be nested. Without Commit, the
// destructor rolls everything back. Once one of its statements has failed, all later ones and
// Commit fail too; a busy engine counts as a failure here.
#pragma once

#include <string>

#include "handles/critical_section.h"
#include "storage/database.h"

namespace quillgate {

class DbTransaction {
 public:
  // Throws DBerror when the transaction cannot begin, also because the engine is busy.
  explicit DbTransaction(Database& database);
  ~DbTransaction();
  DbTransaction(const DbTransaction&) = delete;
  DbTransaction& operator=(const DbTransaction&) = delete;

  // Throws DBerror when the changes cannot be made permanent; everything is then rolled back.
  void Commit();

 private:
  friend class Database;
  enum class State { kOpen, kBroken, kDone };

  // Runs one statement of the transaction, on behalf of Database::Run.
  void Run(const std::wstring& sql, DbRows& rows);
  void RollBack() noexcept;

  Database& database_;
  CriticalSectionLock lock_;
  State state_ = State::kOpen;
};

}  // namespace quillgate
