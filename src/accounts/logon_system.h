// The three logon systems and the user table of each.
#pragma once

#include <optional>
#include <string_view>

#include "storage/settings.h"

namespace quillgate {

enum class LogonSystem { kNone, kQuillgate, kWindows };

// Exactly "QUILLGATE" or "WINDOWS"; any other word is the NONE system.
LogonSystem LogonSystemOf(std::wstring_view word);
// As the settings store it.
std::wstring_view LogonSystemWord(LogonSystem system);
std::wstring_view UserTableOf(LogonSystem system);

// The logon system in the settings. When they cannot be read, the first returns kNone, the second
// nullopt.
LogonSystem CurrentLogonSystem(Settings& settings);
std::optional<LogonSystem> LogonSystemIfKnown(Settings& settings);
void StoreLogonSystem(LogonSystem system, Settings& settings);

// The two users of the NONE system: the common one, and the one that the override password logs on.
inline constexpr std::wstring_view kCommonUserName = L"User";
inline constexpr std::wstring_view kOverrideUserName = L"Admin";

}  // namespace quillgate
