// Settings that take effect together or not at all.
#pragma once

#include "storage/db_transaction.h"

namespace quillgate {

// Runs the work, which writes settings, in one transaction. False when that could not be completed:
// the settings then are as they were, which, like every failure of a setting, nobody is shown.
template <class Work>
bool StoredTogether(Database& database, Work&& work) noexcept {
  try {
    DbTransaction transaction(database);
    work();
    transaction.Commit();
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

}  // namespace quillgate
