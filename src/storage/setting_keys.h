// The numeric keys of the settings store, with meaning and default. Each reader of a key passes its
// own default, and the defaults may differ. Deliberate, see docs/behaviour.md.
#pragma once

#include <string>
#include <string_view>

namespace quillgate {

enum class SettingKey : unsigned {
  kLogonSystem = 845,           // "NONE", "QUILLGATE" or "WINDOWS"; default "NONE"
  kAdapter = 3656,              // service name of the measured adapter; default empty: the first
  kFirstDayOfWeek = 3805,       // 0 = Sunday ... 6; default empty: the locale's
  kLanguage = 5820,             // language identifier in decimal; default "0": the user's own
  kTimeWarningMinutes = 6113,   // minutes left at which to warn; default "10"
  kStatisticsForAdmins = 9883,  // "YES": only administrators see statistics; default "NO"
  kTimeWarnings = 14628,        // "YES" when on; default "YES"
  kLastLogonName = 24646,       // name last entered in the logon dialog; default empty
  kDownloadWarnings = 25549,    // "YES" when on; default "NO"
  kDownloadWarningMegabytes = 29920,  // megabytes left at which to warn; "0" in LimitWarnings
  kUsersEdition = 60917,              // counts the changes of user tables; default "0"
  kFirstStart = 85298,                // "1" until the first start is over, then "0"; default "1"
  kLocalTrafficAllowed = 352936,      // "YES": local traffic passes a closed gate; default "NO"
};

// Prefix of a key that ends with the user's name. The value is "1" once that user was shown the
// reminder to log off.
inline constexpr std::wstring_view kReminderKeyPrefix = L"REMINDER_";

inline constexpr std::wstring_view kYes = L"YES";
inline constexpr std::wstring_view kNo = L"NO";

}  // namespace quillgate
