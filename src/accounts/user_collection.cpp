#include "accounts/user_collection.h"

namespace quillgate {

UserCollection::UserCollection(LogonSystem system, Database& database)
    : system_(system), database_(database) {
  LoadAll();
}

bool UserCollection::LoadAll() {
  UserMap users;
  std::vector<std::wstring> unreadable;
  const bool complete = ReadTable(users, unreadable);
  const CriticalSectionLock hold(lock_);
  users_.swap(users);
  unreadable_.swap(unreadable);
  return complete;
}

std::vector<std::wstring> UserCollection::UnreadableNames() const {
  const CriticalSectionLock hold(lock_);
  return unreadable_;
}

bool UserCollection::ReadTable(UserMap& users, std::vector<std::wstring>& unreadable) {
  try {
    DbRows rows;
    database_.DbQuery(L"SELECT Name FROM " + std::wstring(Table()) + L";", rows);
    for (const DbRow& row : rows) {
      auto user = std::make_shared<User>();
      // Also when the row turns out to be unreadable, the user goes by its name.
      user->SetName(row.at(0));
      users.emplace(row.at(0), user);
      if (!user->Load(row.at(0), Table(), database_)) unreadable.push_back(row.at(0));
    }
    return unreadable.empty();
  } catch (const std::exception&) {
    return false;
  }
}

bool UserCollection::SaveAll() {
  try {
    const UserMap users = Snapshot();
    DbTransaction transaction(database_);
    database_.DbExecute(L"DELETE FROM " + std::wstring(Table()) + L";");
    for (const auto& [name, user] : users) {
      if (!user->Save(Table(), database_)) return false;
    }
    transaction.Commit();
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

bool UserCollection::Add(std::shared_ptr<User> user) {
  const CriticalSectionLock hold(lock_);
  const std::wstring name = user->Name();
  return users_.emplace(name, std::move(user)).second;
}

bool UserCollection::AddStored(std::shared_ptr<User> user) {
  return !Contains(user->Name()) && user->Save(Table(), database_) && Add(std::move(user));
}

bool UserCollection::Remove(std::wstring_view name) {
  const CriticalSectionLock hold(lock_);
  const auto found = users_.find(name);
  if (found == users_.end() || !HasOtherAdministrator(name)) return false;
  users_.erase(found);
  return true;
}

bool UserCollection::Rename(std::wstring_view oldName, std::wstring_view newName) {
  const CriticalSectionLock hold(lock_);
  if (users_.contains(newName)) return false;
  const auto found = users_.find(oldName);
  if (found == users_.end()) return false;
  std::wstring name(newName);
  users_.emplace(newName, found->second);
  // Nothing from here on can fail, so entry and user never disagree on the name.
  found->second->SetName(std::move(name));
  users_.erase(found);
  return true;
}

bool UserCollection::SetAdministrator(User& user, bool administrator) {
  const CriticalSectionLock hold(lock_);
  if (!administrator && !HasOtherAdministrator(user.Name())) return false;
  user.AssignAdministrator(administrator);
  return true;
}

bool UserCollection::HasOtherAdministrator(std::wstring_view name) const {
  for (const auto& [each, user] : users_) {
    if (each != name && user->IsAdministrator()) return true;
  }
  return false;
}

std::shared_ptr<User> UserCollection::Find(std::wstring_view name) const {
  const CriticalSectionLock hold(lock_);
  const auto found = users_.find(name);
  return found == users_.end() ? nullptr : found->second;
}

bool UserCollection::Contains(std::wstring_view name) const {
  return Find(name) != nullptr;
}

std::vector<std::wstring> UserCollection::SortedNames() const {
  const CriticalSectionLock hold(lock_);
  std::vector<std::wstring> names;
  for (const auto& [name, user] : users_)
    names.push_back(name);
  return names;
}

std::size_t UserCollection::Count() const {
  const CriticalSectionLock hold(lock_);
  return users_.size();
}

UserCollection::UserMap UserCollection::Snapshot() const {
  const CriticalSectionLock hold(lock_);
  return users_;
}

void EnsureBuiltInUsers(UserCollection& users) {
  // An empty collection may be one that could not be read; saving over that table would replace
  // the override password by the blank one.
  if (users.Count() != 0 || !users.LoadAll() || users.Count() != 0) return;
  auto everybody = std::make_shared<User>(std::wstring(kCommonUserName));
  auto administrator = std::make_shared<User>(std::wstring(kOverrideUserName));
  administrator->AssignAdministrator(true);
  users.Add(std::move(everybody));
  users.Add(std::move(administrator));
  users.SaveAll();
}

}  // namespace quillgate
