// What a page has changed in users and not applied yet: the edited copies, stored together or not
// at all. Used by one thread; the collection may change meanwhile.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "accounts/user_collection.h"

namespace quillgate {

class UserEdits {
 public:
  explicit UserEdits(std::shared_ptr<UserCollection> users) : users_(std::move(users)) {}

  // The user with the changes so far; nothing when there is no such user.
  std::optional<User> Find(std::wstring_view name) const;
  // Replaces what was changed in the user of that name before.
  void Change(User user);
  // Drops the changes of one user, who has been removed.
  void Forget(std::wstring_view name);

  bool HasChanges() const { return !edited_.empty(); }
  // Whether somebody else is an administrator, changes included.
  bool HasOtherAdministrator(std::wstring_view name) const;

  // Stores all changes in one transaction; those of users who are gone by now are dropped. False
  // when they cannot be stored; they are kept then.
  bool Store();

 private:
  std::shared_ptr<UserCollection> users_;
  std::map<std::wstring, User, std::less<>> edited_;
};

}  // namespace quillgate
