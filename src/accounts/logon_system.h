// The three logon systems and the table of each one's users.
#pragma once

#include <optional>
#include <string_view>

#include "storage/settings.h"

namespace quillgate {

enum class LogonSystem { kNone, kQuillgate, kWindows };

// Exactly "QUILLGATE" or "WINDOWS"; every other word is the NONE system.
LogonSystem LogonSystemOf(std::wstring_view word);
std::wstring_view UserTableOf(LogonSystem system);

// The system that the settings choose now. The first answers NONE, the second nothing, when they
// cannot be read.
LogonSystem CurrentLogonSystem(Settings& settings);
std::optional<LogonSystem> LogonSystemIfKnown(Settings& settings);

// The two users of the NONE system: everybody, and whoever knows the override password.
inline constexpr std::wstring_view kCommonUserName = L"User";
inline constexpr std::wstring_view kOverrideUserName = L"Admin";

}  // namespace quillgate
