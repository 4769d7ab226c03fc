// The settings sheet's page of calendar, network and restrictions. Owned by the sheet, used on the
// service main thread.
#pragma once

#include <vector>

#include "frame/property_page.h"
#include "settings/advanced_settings.h"
#include "settings/settings_surroundings.h"
#include "settings/sheet_state.h"
#include "usage/adapter_list.h"

namespace quillgate {

class AdvancedPage final : public PropertyPage {
 public:
  AdvancedPage(const SettingsSurroundings& surroundings, SessionLog& session, SheetState& state);

 private:
  bool OnInitDialog(HWND window) override;
  void SetTexts(HWND window) override;
  bool OnCommand(int control, int code) override;
  bool OnApply(HWND window) override;

  void ListAdapters(std::wstring_view chosen);
  AdvancedSettings Entered() const;
  // The index in the list of days that stands for the stored number.
  int ShownDay() const;
  // Makes the running service follow what has been stored.
  void TakeEffect(const AdvancedSettings& before, const AdvancedSettings& values);

  const SettingsSurroundings& surroundings_;
  SessionLog& session_;
  SheetState& state_;
  AdvancedSettings stored_;
  std::vector<AdapterEntry> adapters_;
  bool isFilled_ = false;
};

}  // namespace quillgate
