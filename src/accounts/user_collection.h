// The users of one logon system: the table's copy in memory. The service has one, replaced when the
// logon system changes; the setup wizard has its own. Every operation may be called on any thread.
// Users are immutable values that are replaced as a whole: a caller that found one keeps it
// unchanged, also when the collection is destroyed. Changes are serialised, including their
// database access; readers never wait for the database.
//
// Whatever is stored also raises the edition of the user tables, and nothing is stored once that is
// higher than when the users were loaded: a process never writes over what another one has written.
#pragma once

#include <functional>
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

  // Replaces the collection with the users in the table, in new entries. False when the table or
  // one of its rows could not be read; the users read so far are kept. A user with a malformed row
  // is kept too, with the fields that could be read, so that saving does not lose it. Never throws.
  bool LoadAll();

  // The users whose rows the latest LoadAll could not read completely, in the table's order.
  std::vector<std::wstring> UnreadableNames() const;

  // Whether users have been stored elsewhere since the latest LoadAll. False also when the database
  // cannot tell.
  bool IsOutdated();

  // Replaces the table with the collection, all or nothing: on failure (false) the table stays
  // unchanged. What `together` writes to the database belongs to the same transaction. Never
  // throws.
  bool SaveAll(const std::function<void()>& together = nullptr);

  // False when the name exists; the collection is then unchanged.
  bool Add(User user);
  // As Add, and stores the user at once. False, and unchanged, when the name exists or storing
  // fails.
  bool AddStored(User user);

  // Replaces the user of the same name. False, and unchanged, when there is none, or when the last
  // administrator would lose the flag.
  bool Replace(User user);
  // As Replace for all of these users together, and replaces the table with the collection; false,
  // and both unchanged, when that fails.
  bool ReplaceAllStored(std::vector<User> users);

  // False when there is no such user, or when no other user is an administrator.
  bool Remove(std::wstring_view name);
  // The same with the table replaced by the collection at once; false, and both unchanged, when
  // that fails too.
  bool RemoveStored(std::wstring_view name);
  // False when the old name does not exist or the new one does. The entry stays the same.
  bool Rename(std::wstring_view oldName, std::wstring_view newName);
  // False when there is no such user, or when the flag is removed and no other user is an
  // administrator.
  bool SetAdministrator(std::wstring_view name, bool administrator);

  // Names are compared exactly. Null when there is no such user.
  std::shared_ptr<const User> Find(std::wstring_view name) const;
  // For callers that follow a user through its changes.
  std::shared_ptr<const UserEntry> FindEntry(std::wstring_view name) const;
  bool Contains(std::wstring_view name) const;
  bool HasAdministrator() const { return HasAdministrator(Snapshot()); }
  // In ascending order of character codes.
  std::vector<std::wstring> SortedNames() const;
  std::size_t Count() const;

  std::wstring_view Table() const { return UserTableOf(system_); }

 private:
  using UserMap = std::map<std::wstring, std::shared_ptr<const User>, std::less<>>;
  using EntryMap = std::map<std::wstring, std::shared_ptr<UserEntry>, std::less<>>;

  static bool HasAdministrator(const UserMap& users);
  bool HasOtherAdministrator(std::wstring_view name) const;
  // False when the names could not be read; users read so far are in the map.
  bool ReadTable(EntryMap& users, std::vector<std::wstring>& unreadable);
  // Runs the work, which writes to the table, in a transaction that raises the edition. False when
  // the work returns that, throws, or cannot be made permanent.
  bool Store(const std::function<bool()>& work);
  bool ReplaceTable(const UserMap& users, const std::function<void()>& together = nullptr);
  std::optional<std::uint32_t> StoredEdition();
  UserMap Snapshot() const;

  // A snapshot with these users replaced; nullopt when that is not allowed.
  std::optional<UserMap> SnapshotWith(std::vector<User> replacements) const;
  // Replaces the users with those of a snapshot with the same names. Cannot fail.
  void Adopt(const UserMap& users);

  LogonSystem system_;
  Database& database_;
  CriticalSection changes_;  // held during each change, with its database access
  // As loaded, or as stored since; nothing when the table could not be read. Requires changes_.
  std::optional<std::uint32_t> edition_;
  mutable CriticalSection lock_;  // protects the map; taken last and only briefly
  EntryMap users_;
  std::vector<std::wstring> unreadable_;
};

// Adds those of the NONE system's two users that are missing: "User" and the administrator "Admin",
// both with the blank password.
void AddBuiltInUsers(UserCollection& users);
// The same for an empty table, which is saved. A table that cannot be read stays unchanged.
void EnsureBuiltInUsers(UserCollection& users);

}  // namespace quillgate
