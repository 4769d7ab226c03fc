#include "storage/db_transaction.h"

#include "storage/db_engine.h"

namespace quillgate {

DbTransaction::DbTransaction(Database& database)
    : database_(database.Opened()), lock_(database.lock_) {
  DbRows none;
  if (!database_.Engine().Run(L"BEGIN IMMEDIATE;", none)) throw BusyError();
  database_.transaction_ = this;
}

DbTransaction::~DbTransaction() {
  database_.transaction_ = nullptr;
  if (state_ != State::kDone) RollBack();
}

void DbTransaction::Commit() {
  DbRows none;
  Run(L"COMMIT;", none);
  state_ = State::kDone;
}

void DbTransaction::Run(const std::wstring& sql, DbRows& rows) {
  if (state_ != State::kOpen) {
    throw DBerror(L"The transaction has failed.", DBerror::kOwnFailure);
  }
  // Broken until the statement has succeeded: after a failure, no later statement may run outside
  // of the transaction, and Commit must not make only a part permanent.
  state_ = State::kBroken;
  if (!database_.Engine().RunInPlace(sql, rows)) throw BusyError();
  state_ = State::kOpen;
}

void DbTransaction::RollBack() noexcept {
  if (database_.engine_ == nullptr) return;
  DbRows none;
  try {
    if (database_.engine_->RunInPlace(L"ROLLBACK;", none)) return;
  } catch (const std::exception&) {
    // The engine has probably rolled back already; reopening makes sure.
  }
  try {
    database_.engine_->Reopen();
  } catch (const std::exception&) {
    // The next statement tries to open the file again.
  }
}

}  // namespace quillgate
