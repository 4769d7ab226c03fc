// The users of one logon system: the table's mirror in memory. The process has one, made by the
// service main thread and replaced when the logon system changes. Users are shared, so that a
// thread that judges one is not hurt when the collection goes; the map itself is guarded by a lock.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "accounts/logon_system.h"
#include "accounts/user.h"

namespace quillgate {

class UserCollection {
 public:
  // Loads the table's users, as LoadAll does.
  UserCollection(LogonSystem system, Database& database);

  // Replaces the collection by what the table holds. False when the table or one of its rows could
  // not be read: the users read so far are kept, one with a malformed row too, with the fields that
  // could be read, so that saving does not lose it. Never throws.
  bool LoadAll();

  // Of the rows that the latest LoadAll could not read whole, in the table's order.
  std::vector<std::wstring> UnreadableNames() const;

  // Replaces the table by the collection, all or nothing: on a failure (false) the table stays as
  // it was. Never throws.
  bool SaveAll();

  // False when the name is taken; the collection is then unchanged.
  bool Add(std::shared_ptr<User> user);
  // The same for a user who is stored at once; false, and unchanged, when that fails too.
  bool AddStored(std::shared_ptr<User> user);
  // False when there is no such user, or no administrator other than it.
  bool Remove(std::wstring_view name);
  // False when the old name is absent or the new one present.
  bool Rename(std::wstring_view oldName, std::wstring_view newName);
  // Granting always succeeds; revoking fails when no other user is an administrator.
  bool SetAdministrator(User& user, bool administrator);

  // Names are compared exactly. Null when absent.
  std::shared_ptr<User> Find(std::wstring_view name) const;
  bool Contains(std::wstring_view name) const;
  // In ascending order of character codes.
  std::vector<std::wstring> SortedNames() const;
  std::size_t Count() const;

  std::wstring_view Table() const { return UserTableOf(system_); }

 private:
  using UserMap = std::map<std::wstring, std::shared_ptr<User>, std::less<>>;

  bool HasOtherAdministrator(std::wstring_view name) const;
  bool ReadTable(UserMap& users, std::vector<std::wstring>& unreadable);
  UserMap Snapshot() const;

  LogonSystem system_;
  Database& database_;
  mutable CriticalSection lock_;
  UserMap users_;
  std::vector<std::wstring> unreadable_;
};

// The NONE system's two users, if its table is empty: "User" and the administrator "Admin", both
// with the blank password; saved. A table that cannot be read is left alone.
void EnsureBuiltInUsers(UserCollection& users);

}  // namespace quillgate
