#include "accounts/user_collection.h"

#include <algorithm>

#include "storage/db_transaction.h"

namespace quillgate {
namespace {

std::shared_ptr<UserEntry> NewEntry(User user) {
  return std::make_shared<UserEntry>(std::make_shared<const User>(std::move(user)));
}

}  // namespace

UserCollection::UserCollection(LogonSystem system, Database& database)
    : system_(system), database_(database) {
  LoadAll();
}

bool UserCollection::LoadAll() {
  const CriticalSectionLock change(changes_);
  EntryMap users;
  std::vector<std::wstring> unreadable;
  // Read first, so that a change during the reading is noticed afterwards.
  edition_ = StoredEdition();
  const bool isRead = ReadTable(users, unreadable);
  if (!isRead) edition_.reset();
  const CriticalSectionLock hold(lock_);
  users_.swap(users);
  unreadable_.swap(unreadable);
  return isRead && unreadable_.empty();
}

std::optional<std::uint32_t> UserCollection::StoredEdition() {
  const auto text = Settings(database_).GetSettingIfKnown(SettingKey::kUsersEdition, L"0");
  return text ? std::optional(SettingNumber(*text)) : std::nullopt;
}

// A lower edition is that of a database that has been made anew since.
bool UserCollection::IsOutdated() {
  const CriticalSectionLock change(changes_);
  const auto stored = StoredEdition();
  return stored && edition_ && *stored > *edition_;
}

std::vector<std::wstring> UserCollection::UnreadableNames() const {
  const CriticalSectionLock hold(lock_);
  return unreadable_;
}

bool UserCollection::ReadTable(EntryMap& users, std::vector<std::wstring>& unreadable) {
  try {
    DbRows rows;
    if (!database_.Run(L"SELECT Name FROM " + std::wstring(Table()) + L";", rows)) return false;
    for (const DbRow& row : rows) {
      User user;
      // The user keeps its name even when the row turns out to be unreadable.
      user.SetName(row.at(0));
      if (!user.Load(row.at(0), Table(), database_)) unreadable.push_back(row.at(0));
      users.emplace(row.at(0), NewEntry(std::move(user)));
    }
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

bool UserCollection::SaveAll(const std::function<void()>& together) {
  const CriticalSectionLock change(changes_);
  return ReplaceTable(Snapshot(), together);
}

bool UserCollection::Store(const std::function<bool()>& work) {
  try {
    DbTransaction transaction(database_);
    const auto stored = StoredEdition();
    if (!edition_ || !stored || *stored > *edition_ || !work()) return false;
    const std::uint32_t next = *edition_ + 1;
    Settings(database_).SetSetting(SettingKey::kUsersEdition, std::to_wstring(next));
    transaction.Commit();
    edition_ = next;
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

bool UserCollection::ReplaceTable(const UserMap& users, const std::function<void()>& together) {
  return Store([&] {
    database_.DbExecute(L"DELETE FROM " + std::wstring(Table()) + L";");
    for (const auto& [name, user] : users) {
      if (!user->Save(Table(), database_)) return false;
    }
    if (together) together();
    return true;
  });
}

bool UserCollection::Add(User user) {
  const CriticalSectionLock change(changes_);
  const CriticalSectionLock hold(lock_);
  const std::wstring name = user.Name();
  return users_.emplace(name, NewEntry(std::move(user))).second;
}

bool UserCollection::AddStored(User user) {
  const CriticalSectionLock change(changes_);
  return !Contains(user.Name()) && Store([&] { return user.Save(Table(), database_); }) &&
         Add(std::move(user));
}

bool UserCollection::Replace(User user) {
  const CriticalSectionLock change(changes_);
  const auto users = SnapshotWith({std::move(user)});
  if (users) Adopt(*users);
  return users.has_value();
}

bool UserCollection::ReplaceAllStored(std::vector<User> replacements) {
  const CriticalSectionLock change(changes_);
  const auto users = SnapshotWith(std::move(replacements));
  if (!users || !ReplaceTable(*users)) return false;
  Adopt(*users);
  return true;
}

std::optional<UserCollection::UserMap> UserCollection::SnapshotWith(
    std::vector<User> replacements) const {
  UserMap users = Snapshot();
  const bool hadAdministrator = HasAdministrator(users);
  for (User& replacement : replacements) {
    const auto found = users.find(replacement.Name());
    if (found == users.end()) return {};
    found->second = std::make_shared<const User>(std::move(replacement));
  }
  if (hadAdministrator && !HasAdministrator(users)) return {};
  return users;
}

void UserCollection::Adopt(const UserMap& users) {
  const CriticalSectionLock hold(lock_);
  for (const auto& [name, entry] : users_)
    entry->Replace(users.find(name)->second);
}

bool UserCollection::Remove(std::wstring_view name) {
  const CriticalSectionLock change(changes_);
  const CriticalSectionLock hold(lock_);
  const auto found = users_.find(name);
  if (found == users_.end() || !HasOtherAdministrator(name)) return false;
  users_.erase(found);
  return true;
}

bool UserCollection::RemoveStored(std::wstring_view name) {
  const CriticalSectionLock change(changes_);
  UserMap users = Snapshot();
  const auto found = users.find(name);
  if (found == users.end() || !HasOtherAdministrator(name)) return false;
  users.erase(found);
  return ReplaceTable(users) && Remove(name);
}

bool UserCollection::Rename(std::wstring_view oldName, std::wstring_view newName) {
  const CriticalSectionLock change(changes_);
  const CriticalSectionLock hold(lock_);
  const auto found = users_.find(oldName);
  if (found == users_.end() || users_.contains(newName)) return false;
  User renamed = *found->second->Latest();
  renamed.SetName(std::wstring(newName));
  auto value = std::make_shared<const User>(std::move(renamed));
  std::wstring name(newName);
  // Nothing from here on can fail, so the names of entry and user always match.
  auto node = users_.extract(found);
  node.key() = std::move(name);
  node.mapped()->Replace(std::move(value));
  users_.insert(std::move(node));
  return true;
}

bool UserCollection::SetAdministrator(std::wstring_view name, bool administrator) {
  const CriticalSectionLock change(changes_);
  const auto user = Find(name);
  if (user == nullptr || (!administrator && !HasOtherAdministrator(name))) return false;
  User edited = *user;
  edited.AssignAdministrator(administrator);
  return Replace(std::move(edited));
}

bool UserCollection::HasAdministrator(const UserMap& users) {
  return std::any_of(users.begin(), users.end(),
                     [](const auto& each) { return each.second->IsAdministrator(); });
}

bool UserCollection::HasOtherAdministrator(std::wstring_view name) const {
  UserMap others = Snapshot();
  others.erase(std::wstring(name));
  return HasAdministrator(others);
}

std::shared_ptr<const User> UserCollection::Find(std::wstring_view name) const {
  const CriticalSectionLock hold(lock_);
  const auto entry = FindEntry(name);
  return entry == nullptr ? nullptr : entry->Latest();
}

std::shared_ptr<const UserEntry> UserCollection::FindEntry(std::wstring_view name) const {
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
  for (const auto& [name, entry] : users_)
    names.push_back(name);
  return names;
}

std::size_t UserCollection::Count() const {
  const CriticalSectionLock hold(lock_);
  return users_.size();
}

UserCollection::UserMap UserCollection::Snapshot() const {
  const CriticalSectionLock hold(lock_);
  UserMap users;
  for (const auto& [name, entry] : users_)
    users.emplace(name, entry->Latest());
  return users;
}

void AddBuiltInUsers(UserCollection& users) {
  User administrator{std::wstring(kOverrideUserName)};
  administrator.AssignAdministrator(true);
  users.Add(User(std::wstring(kCommonUserName)));
  users.Add(std::move(administrator));
}

void EnsureBuiltInUsers(UserCollection& users) {
  // An empty collection may be one that could not be read; saving it would replace the override
  // password in the table with the blank one.
  if (users.Count() != 0 || !users.LoadAll() || users.Count() != 0) return;
  AddBuiltInUsers(users);
  users.SaveAll();
}

}  // namespace quillgate
