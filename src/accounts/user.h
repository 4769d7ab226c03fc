// One user record with its rules. A plain value: copies are independent. To change a user of a
// UserCollection, edit a copy and pass it to Replace. The collection chooses the table.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "storage/database.h"

namespace quillgate {

enum class LimitPeriod : std::int32_t { kUnknown = -1, kDay = 0, kWeek = 1, kMonth = 2 };

// Index = day x 24 + hour, day 0 = Sunday; true = blocked.
using HoursTable = std::array<bool, 168>;

class User {
 public:
  // A user to be filled by Load: no password digest, otherwise the defaults of a new user.
  User() = default;
  // A new user: blank password, not an administrator, limits off (1 per day), every hour allowed.
  explicit User(std::wstring name);
  virtual ~User() = default;
  User(const User&) = default;
  User(User&&) = default;
  User& operator=(const User&) = default;
  User& operator=(User&&) = default;

  const std::wstring& Name() const { return name_; }
  void SetName(std::wstring name) { name_ = std::move(name); }

  bool IsAdministrator() const { return administrator_; }
  // Sets the flag without a check; UserCollection protects the last administrator.
  void AssignAdministrator(bool administrator) { administrator_ = administrator; }

  // Any text; only its digest is stored.
  void SetPassword(std::wstring_view password);
  bool CheckPassword(std::wstring_view password) const;
  const std::wstring& StoredDigest() const { return digest_; }

  struct Limit {
    bool enabled = false;
    std::int32_t amount = 1;  // minutes, or megabytes of 1,048,576 bytes
    LimitPeriod period = LimitPeriod::kDay;
  };
  const Limit& TimeLimit() const { return timeLimit_; }
  void SetTimeLimit(const Limit& limit) { timeLimit_ = limit; }
  const Limit& DownloadLimit() const { return downloadLimit_; }
  void SetDownloadLimit(const Limit& limit) { downloadLimit_ = limit; }

  const HoursTable& ConnectHours() const { return connectHours_; }
  void SetConnectHours(const HoursTable& hours) { connectHours_ = hours; }
  // Whether the current local hour is blocked.
  bool IsHourBlocked() const;

  // Reads the user of that name from the table. False when there is none or it cannot be read;
  // fields read so far stay set. Never throws.
  bool Load(std::wstring_view name, std::wstring_view table, Database& database);

  // Writes the user to the table and replaces one of the same name. False for an empty name, a text
  // that cannot be used in a statement, or any database failure. Never throws.
  bool Save(std::wstring_view table, Database& database) const;

 private:
  // Sets the fields in column order; throws std::out_of_range at the first malformed one.
  void ReadRow(const DbRow& row);

  std::wstring name_;
  std::wstring digest_;
  bool administrator_ = false;
  Limit timeLimit_;
  Limit downloadLimit_;
  HoursTable connectHours_{};
};

// Whether a user of that name can be stored in any table: no statement with the name is refused for
// its characters or its length.
bool IsStorableUserName(std::wstring_view name);

}  // namespace quillgate
