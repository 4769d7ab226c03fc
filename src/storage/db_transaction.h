// Several statements that take effect together or not at all. Holds the database lock for as long
// as it lives, so keep it short; not to be nested. Without Commit, everything is undone. Once one
// of its statements has failed - here a busy engine is a failure too - the others and Commit fail.
#pragma once

#include <string>

#include "handles/critical_section.h"
#include "storage/database.h"

namespace quillgate {

class DbTransaction {
 public:
  // Throws DBerror when the transaction cannot begin, a busy engine included.
  explicit DbTransaction(Database& database);
  ~DbTransaction();
  DbTransaction(const DbTransaction&) = delete;
  DbTransaction& operator=(const DbTransaction&) = delete;

  // Throws DBerror, and everything is undone, when the changes cannot be made permanent.
  void Commit();

 private:
  friend class Database;
  enum class State { kOpen, kBroken, kDone };

  // One of its statements, wherever in the program that is run.
  void Run(const std::wstring& sql, DbRows& rows);
  void RollBack() noexcept;

  Database& database_;
  CriticalSectionLock lock_;
  State state_ = State::kOpen;
};

}  // namespace quillgate
