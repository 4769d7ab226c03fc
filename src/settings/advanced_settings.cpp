#include "settings/advanced_settings.h"

namespace quillgate {

AdvancedSettings ReadAdvancedSettings(Settings& settings) {
  return {SettingNumber(settings.GetSetting(SettingKey::kFirstDayOfWeek, L"0")),
          settings.GetSetting(SettingKey::kAdapter, {}),
          settings.GetSetting(SettingKey::kLocalTrafficAllowed, kNo) == kYes,
          settings.GetSetting(SettingKey::kStatisticsForAdmins, kNo) == kYes};
}

void StoreAdvancedSettings(const AdvancedSettings& values, Settings& settings) {
  settings.SetSetting(SettingKey::kFirstDayOfWeek, std::to_wstring(values.firstDay));
  settings.SetSetting(SettingKey::kAdapter, values.adapter);
  settings.SetSetting(SettingKey::kLocalTrafficAllowed, values.localTrafficAllowed ? kYes : kNo);
  settings.SetSetting(SettingKey::kStatisticsForAdmins,
                      values.statisticsForAdministrators ? kYes : kNo);
}

}  // namespace quillgate
