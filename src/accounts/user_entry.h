// The entry of one user in a UserCollection. The user is an immutable value that is replaced as a
// whole: a caller that took the previous value keeps it unchanged. Owned by the collection and by
// every object that follows the user, such as the logon session; it outlives the user's removal.
// Any thread; calls wait for nothing but other calls of the same entry.
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

  // For the collection only, which returns const entries.
  void Replace(std::shared_ptr<const User> user) {
    const CriticalSectionLock hold(lock_);
    user_.swap(user);
  }

 private:
  mutable CriticalSection lock_;
  std::shared_ptr<const User> user_;
};

}  // namespace quillgate
