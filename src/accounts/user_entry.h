// The place of one user in a UserCollection. The user is a value: it is replaced here as a whole,
// so whoever took the one before keeps it unchanged. Owned by the collection and by whoever follows
// the user, who may be logged on; it outlives the user's removal. Any thread; no call waits for the
// database, or for anything but another of these calls.
#pragma once

#include <memory>

#include "accounts/user.h"
#include "handles/critical_section.h"

namespace quillgate {

class UserEntry {
 public:
  explicit UserEntry(std::shared_ptr<const User> user) : user_(std::move(user)) {}

  // The user as it is now; never null.
  std::shared_ptr<const User> Latest() const {
    const CriticalSectionLock hold(lock_);
    return user_;
  }

  // For the collection alone, which gives out entries that cannot be changed.
  void Replace(std::shared_ptr<const User> user) {
    const CriticalSectionLock hold(lock_);
    user_.swap(user);
  }

 private:
  mutable CriticalSection lock_;
  std::shared_ptr<const User> user_;
};

}  // namespace quillgate
