#include "accounts/user.h"

#include <windows.h>

#include <algorithm>
#include <cwchar>
#include <limits>

#include "accounts/logon_system.h"
#include "accounts/password_digest.h"
#include "storage/setting_keys.h"

namespace quillgate {
namespace {

// The two limits differ, so a password that is truncated when it is set is never accepted.
constexpr std::size_t kSetLimitBytes = 255;
constexpr std::size_t kCheckLimitBytes = 256;

// Indexes of a row's values, in the order of the table's columns.
enum Column : std::size_t {
  kName,
  kPassword,
  kTimeLimitEnabled,
  kTimeLimit,
  kTimeLimitPeriod,
  kDownloadLimitEnabled,
  kDownloadLimit,
  kDownloadLimitPeriod,
  kConnectHours,
  kPrivileges,
};
constexpr std::array<std::wstring_view, 10> kColumnNames = {
    L"Name",           L"Password", L"TimeLimitEnabled", L"TimeLimit",    L"TimeLimitPeriod",
    L"DLLimitEnabled", L"DLLimit",  L"DLLimitPeriod",    L"ConnectHours", L"Privileges",
};
using ColumnValues = std::array<std::wstring, kColumnNames.size()>;

std::int32_t DecimalValue(const std::wstring& text) {
  using Limits = std::numeric_limits<std::int32_t>;
  const long long value = std::wcstoll(text.c_str(), nullptr, 10);
  return static_cast<std::int32_t>(std::clamp<long long>(value, Limits::min(), Limits::max()));
}

LimitPeriod PeriodOf(const std::wstring& text) {
  const std::int32_t number = DecimalValue(text);
  return number >= 0 && number <= 2 ? static_cast<LimitPeriod>(number) : LimitPeriod::kUnknown;
}

std::wstring PeriodText(LimitPeriod period) {
  return std::to_wstring(static_cast<std::int32_t>(period));
}

std::wstring YesOrNo(bool value) {
  return std::wstring(value ? kYes : kNo);
}

std::wstring HoursText(const HoursTable& hours) {
  std::wstring text;
  for (const bool blocked : hours)
    text += blocked ? L'1' : L'0';
  return text;
}

// Throws std::out_of_range when the text is too short; the hours up to its end are then set.
void ReadHours(const std::wstring& text, HoursTable& hours) {
  for (std::size_t i = 0; i < hours.size(); ++i)
    hours[i] = text.at(i) == L'1';
}

ColumnValues ColumnValuesOf(const User& user) {
  return {
      user.Name(),
      user.StoredDigest(),
      YesOrNo(user.TimeLimit().enabled),
      std::to_wstring(user.TimeLimit().amount),
      PeriodText(user.TimeLimit().period),
      YesOrNo(user.DownloadLimit().enabled),
      std::to_wstring(user.DownloadLimit().amount),
      PeriodText(user.DownloadLimit().period),
      HoursText(user.ConnectHours()),
      user.IsAdministrator() ? L"1" : L"0",
  };
}

std::wstring InsertStatement(std::wstring_view table, const ColumnValues& values) {
  std::wstring list;
  for (const std::wstring& value : values)
    list += (list.empty() ? L"" : L", ") + SqlText(value);
  return L"INSERT INTO " + std::wstring(table) + L" VALUES (" + list + L");";
}

std::wstring UpdateStatement(std::wstring_view table, const ColumnValues& values) {
  std::wstring list;
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (!list.empty()) list += L", ";
    list.append(kColumnNames[i]).append(L" = ").append(SqlText(values[i]));
  }
  return L"UPDATE " + std::wstring(table) + L" SET " + list + L" WHERE Name = " +
         SqlText(values[kName]) + L";";
}

std::wstring SelectStatement(std::wstring_view columns, std::wstring_view table,
                             std::wstring_view name) {
  return L"SELECT " + std::wstring(columns) + L" FROM " + std::wstring(table) + L" WHERE Name = " +
         SqlText(name) + L";";
}

}  // namespace

User::User(std::wstring name) : name_(std::move(name)) {
  SetPassword(L"");
}

void User::SetPassword(std::wstring_view password) {
  digest_ = PasswordDigest(password, kSetLimitBytes);
}

bool User::CheckPassword(std::wstring_view password) const {
  return PasswordDigest(password, kCheckLimitBytes) == digest_;
}

bool User::IsHourBlocked() const {
  SYSTEMTIME now{};
  ::GetLocalTime(&now);
  return connectHours_.at(now.wDayOfWeek * 24u + now.wHour);
}

bool User::Load(std::wstring_view name, std::wstring_view table, Database& database) {
  try {
    DbRows rows;
    database.DbQuery(SelectStatement(L"*", table, name), rows);
    if (rows.empty()) return false;
    ReadRow(rows.front());
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

void User::ReadRow(const DbRow& row) {
  name_ = row.at(kName);
  digest_ = row.at(kPassword);
  timeLimit_.enabled = row.at(kTimeLimitEnabled) == kYes;
  timeLimit_.amount = DecimalValue(row.at(kTimeLimit));
  timeLimit_.period = PeriodOf(row.at(kTimeLimitPeriod));
  downloadLimit_.enabled = row.at(kDownloadLimitEnabled) == kYes;
  downloadLimit_.amount = DecimalValue(row.at(kDownloadLimit));
  downloadLimit_.period = PeriodOf(row.at(kDownloadLimitPeriod));
  ReadHours(row.at(kConnectHours), connectHours_);
  administrator_ = row.at(kPrivileges).at(0) == L'1';
}

bool User::Save(std::wstring_view table, Database& database) const {
  if (name_.empty()) return false;
  try {
    DbRows rows;
    database.DbQuery(SelectStatement(L"Name", table, name_), rows);
    const ColumnValues values = ColumnValuesOf(*this);
    database.DbExecute(rows.empty() ? InsertStatement(table, values)
                                    : UpdateStatement(table, values));
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

bool IsStorableUserName(std::wstring_view name) {
  // The longest statement, with the longest values of all other columns.
  User user{std::wstring(name)};
  constexpr User::Limit kLongest{true, std::numeric_limits<std::int32_t>::min(),
                                 LimitPeriod::kUnknown};
  user.SetTimeLimit(kLongest);
  user.SetDownloadLimit(kLongest);
  try {
    return !name.empty() && FitsStatement(UpdateStatement(UserTableOf(LogonSystem::kQuillgate),
                                                          ColumnValuesOf(user)));
  } catch (const DBerror&) {
    return false;
  }
}

}  // namespace quillgate
