#include "settings/general_settings.h"

namespace quillgate {
namespace {

constexpr std::size_t kMaximumLength = 31;  // characters of a threshold

// The keys of one warning.
struct WarningKeys {
  SettingKey enabled;
  SettingKey threshold;
};
constexpr WarningKeys kTimeKeys{SettingKey::kTimeWarnings, SettingKey::kTimeWarningMinutes};
constexpr WarningKeys kDownloadKeys{SettingKey::kDownloadWarnings,
                                    SettingKey::kDownloadWarningMegabytes};

WarningSetting ReadWarning(Settings& settings, WarningKeys keys, std::wstring_view enabled) {
  return {settings.GetSetting(keys.enabled, enabled) == kYes,
          settings.GetSetting(keys.threshold, L"10")};
}

// True when the threshold has changed. That of a warning that is off stays as it was.
bool StoreWarning(const WarningSetting& warning, Settings& settings, WarningKeys keys) {
  settings.SetSetting(keys.enabled, warning.enabled ? kYes : kNo);
  if (!warning.enabled) return false;
  const std::wstring threshold = warning.threshold.substr(0, kMaximumLength);
  const bool isNew = settings.GetSetting(keys.threshold, {}) != threshold;
  settings.SetSetting(keys.threshold, threshold);
  return isNew;
}

}  // namespace

GeneralSettings ReadGeneralSettings(Settings& settings) {
  GeneralSettings values;
  values.logonSystem = CurrentLogonSystem(settings);
  values.time = ReadWarning(settings, kTimeKeys, kYes);
  values.download = ReadWarning(settings, kDownloadKeys, kNo);
  values.language = SettingNumber(settings.GetSetting(SettingKey::kLanguage, L"0"));
  return values;
}

bool StoreGeneralSettings(const GeneralSettings& values, Settings& settings) {
  const bool isTimeNew = StoreWarning(values.time, settings, kTimeKeys);
  const bool isDownloadNew = StoreWarning(values.download, settings, kDownloadKeys);
  settings.SetSetting(SettingKey::kLanguage, std::to_wstring(values.language));
  return isTimeNew || isDownloadNew;
}

std::optional<std::size_t> ShownLanguage(const LanguageList& languages, DWORD stored,
                                         LANGID systemDefault) {
  std::optional<std::size_t> english;
  std::optional<std::size_t> shown;
  for (std::size_t i = 0; i < languages.size(); ++i) {
    const LANGID id = PRIMARYLANGID(languages[i].id);
    if (id == LANG_ENGLISH) {
      english = i;
    } else if ((id == systemDefault && !shown) || id == stored) {
      shown = i;
    }
  }
  if (shown) return shown;
  return english;
}

}  // namespace quillgate
