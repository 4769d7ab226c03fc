// The values of the settings sheet's General page, apart from the page: what is read, which numbers
// are accepted, and what is stored. The settings store does the waiting; any thread.
#pragma once

#include <optional>
#include <string>

#include "accounts/logon_system.h"
#include "frame/number_range.h"
#include "storage/settings.h"
#include "text/message_catalogue.h"

namespace quillgate {

inline constexpr NumberRange kWarningMinutes{1, 1440};
inline constexpr NumberRange kWarningMegabytes{1, 8192};

// A warning, with its threshold as the text of a field.
struct WarningSetting {
  bool enabled = false;
  std::wstring threshold;
};

struct GeneralSettings {
  LogonSystem logonSystem = LogonSystem::kNone;
  WarningSetting time;      // minutes
  WarningSetting download;  // megabytes
  DWORD language = 0;       // a primary language identifier
};

// `language` is the stored number, 0 for none. See ShownLanguage.
GeneralSettings ReadGeneralSettings(Settings& settings);

// Writes everything but the logon system. True when a threshold that is in force has changed, so
// that the warnings of the running session may be given again.
bool StoreGeneralSettings(const GeneralSettings& values, Settings& settings);

// The index of the language that the page shows as the chosen one; nothing for an empty list. The
// order of the tests is deliberate, see docs/behaviour.md.
std::optional<std::size_t> ShownLanguage(const LanguageList& languages, DWORD stored,
                                         LANGID systemDefault);

}  // namespace quillgate
