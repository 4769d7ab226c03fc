// Topics of the help file, and the numbers of the popup texts for single controls.
#pragma once

#include <windows.h>

namespace quillgate {

inline constexpr wchar_t kHelpFileName[] = L"quillgate.chm";

inline constexpr wchar_t kTopicIndex[] = L"html/index.html";
inline constexpr wchar_t kTopicLogon[] = L"html/logonoff.html";
inline constexpr wchar_t kTopicConnectionGeneral[] = L"html/conn-general.html";
inline constexpr wchar_t kTopicConnectionDetails[] = L"html/conn-details.html";
inline constexpr wchar_t kTopicStatisticsDetails[] = L"html/reports1.html";
inline constexpr wchar_t kTopicStatisticsTopList[] = L"html/reports2.html";
inline constexpr wchar_t kTopicSettingsGeneral[] = L"html/opt-general.html";
inline constexpr wchar_t kTopicSettingsUsers[] = L"html/opt-users.html";
inline constexpr wchar_t kTopicSettingsAdvanced[] = L"html/opt-advanced.html";
inline constexpr wchar_t kTopicHours[] = L"html/hours.html";
inline constexpr wchar_t kTopicSetupWizard[] = L"html/wizard.html";

// The number of the popup text of a control. The dialog templates contain the same numbers as help
// identifiers.
constexpr DWORD HelpPopupNumber(WORD dialogTemplate, WORD control) {
  return 0x80000000u + dialogTemplate * 0x10000u + control;
}

}  // namespace quillgate
