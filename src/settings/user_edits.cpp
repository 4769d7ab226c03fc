#include "settings/user_edits.h"

#include <algorithm>

namespace quillgate {

std::optional<User> UserEdits::Find(std::wstring_view name) const {
  const auto user = users_->Find(name);
  if (user == nullptr) return std::nullopt;
  const auto edited = edited_.find(name);
  return edited != edited_.end() ? edited->second : *user;
}

void UserEdits::Change(User user) {
  std::wstring name = user.Name();
  edited_.insert_or_assign(std::move(name), std::move(user));
}

void UserEdits::Forget(std::wstring_view name) {
  const auto found = edited_.find(name);
  if (found != edited_.end()) edited_.erase(found);
}

bool UserEdits::HasOtherAdministrator(std::wstring_view name) const {
  return std::ranges::any_of(users_->SortedNames(), [&](const std::wstring& each) {
    if (each == name) return false;
    const auto edited = edited_.find(each);
    if (edited != edited_.end()) return edited->second.IsAdministrator();
    const auto user = users_->Find(each);
    return user != nullptr && user->IsAdministrator();
  });
}

bool UserEdits::Store() {
  std::vector<User> changed;
  for (const auto& [name, user] : edited_) {
    if (users_->Contains(name)) changed.push_back(user);
  }
  if (!changed.empty() && !users_->ReplaceAllStored(std::move(changed))) return false;
  edited_.clear();
  return true;
}

}  // namespace quillgate
