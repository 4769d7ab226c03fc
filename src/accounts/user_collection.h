// The users of one logon system: the table's mirror in memory. The process has one, made by the
// service main thread and replaced when the logon system changes. Every operation may be called on
// any thread. Users are values that are replaced as a whole: whoever found one keeps it as it was,
// also when the collection goes. Changes are made one at a time, each with its storing; who only
// reads never waits for the database.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "accounts/logon_system.h"
#include "accounts/user.h"
#include "accounts/user_entry.h"

namespace quillgate {

class UserCollection {
 public:
  // Loads the table's users, as LoadAll does.
  UserCollection(LogonSystem system, Database& database);

  // Replaces the collection by what the table holds, with new entries. False when the table or one
  // of its rows could not be read: the users read so far are kept, one with a malformed row too,
  // with the fields that could be read, so that saving does not lose it. Never throws.
  bool LoadAll();

  // Of the rows that the latest LoadAll could not read whole, in the table's order.
  std::vector<std::wstring> UnreadableNames() const;

  // Replaces the table by the collection, all or nothing: on a failure (false) the table stays as
  // it was. Never throws.
  bool SaveAll();

  // False when the name is taken; the collection is then unchanged.
  bool Add(User user);
  // The same for a user who is stored at once; false, and unchanged, when that fails too.
  bool AddStored(User user);

  // The user takes the place of the one of the same name. False, and unchanged, when there is none,
  // or when it would take the last administrator's flag.
  bool Replace(User user);
  // The same for all of these users together, with the table replaced by the collection; false, and
  // both unchanged, when that fails too.
  bool ReplaceAllStored(std::vector<User> users);

  // False when there is no such user, or no administrator other than it.
  bool Remove(std::wstring_view name);
  // False when the old name is absent or the new one present. The entry stays the same.
  bool Rename(std::wstring_view oldName, std::wstring_view newName);
  // False when there is no such user. Granting succeeds otherwise; revoking fails when no other
  // user is an administrator.
  bool SetAdministrator(std::wstring_view name, bool administrator);

  // Names are compared exactly. Null when absent.
  std::shared_ptr<const User> Find(std::wstring_view name) const;
  // For those who follow a user over its changes.
  std::shared_ptr<const UserEntry> FindEntry(std::wstring_view name) const;
  bool Contains(std::wstring_view name) const;
  // In ascending order of character codes.
  std::vector<std::wstring> SortedNames() const;
  std::size_t Count() const;

  std::wstring_view Table() const { return UserTableOf(system_); }

 private:
  using UserMap = std::map<std::wstring, std::shared_ptr<const User>, std::less<>>;
  using EntryMap = std::map<std::wstring, std::shared_ptr<UserEntry>, std::less<>>;

  static bool HasAdministrator(const UserMap& users);
  bool HasOtherAdministrator(std::wstring_view name) const;
  bool ReadTable(EntryMap& users, std::vector<std::wstring>& unreadable);
  bool ReplaceTable(const UserMap& users);
  UserMap Snapshot() const;

  // What the collection becomes with these users replaced; nothing when that is not allowed.
  std::optional<UserMap> SnapshotWith(std::vector<User> replacements) const;
  // Takes over a snapshot of the same names. Cannot fail.
  void Adopt(const UserMap& users);

  LogonSystem system_;
  Database& database_;
  CriticalSection changes_;       // held over each change, the database's part included
  mutable CriticalSection lock_;  // around the map; taken last, and for moments only
  EntryMap users_;
  std::vector<std::wstring> unreadable_;
};

// The NONE system's two users, if its table is empty: "User" and the administrator "Admin", both
// with the blank password; saved. A table that cannot be read is left alone.
void EnsureBuiltInUsers(UserCollection& users);

}  // namespace quillgate
