// The values of the settings sheet's Advanced page, apart from the page. Any thread.
#pragma once

#include <string>

#include "storage/settings.h"

namespace quillgate {

struct AdvancedSettings {
  std::uint32_t firstDay = 0;  // 0 = Sunday; what the settings hold may be any number
  std::wstring adapter;        // its service name
  bool localTrafficAllowed = false;
  bool statisticsForAdministrators = false;
};

AdvancedSettings ReadAdvancedSettings(Settings& settings);
void StoreAdvancedSettings(const AdvancedSettings& values, Settings& settings);

}  // namespace quillgate
