// The settings sheet's page of logon system, warnings and language. Owned by the sheet, used on the
// service main thread.
#pragma once

#include "frame/balloon_tip.h"
#include "frame/property_page.h"
#include "settings/general_settings.h"
#include "settings/settings_surroundings.h"
#include "settings/sheet_state.h"

namespace quillgate {

class GeneralPage final : public PropertyPage {
 public:
  GeneralPage(const SettingsSurroundings& surroundings, SessionLog& session, SheetState& state);

 private:
  bool OnInitDialog(HWND window) override;
  void SetTexts(HWND window) override;
  bool OnCommand(int control, int code) override;
  bool OnApply(HWND window) override;

  void ListLanguages(DWORD stored) const;
  void ShowWindowsHint();
  void EnableThresholds() const;
  LogonSystem ChosenSystem() const;
  GeneralSettings Entered() const;
  // Both thresholds, as far as their warnings are on; one that is refused brings the page up.
  bool AreThresholdsValid() const;
  bool IsThresholdValid(const WarningSetting& warning, int field, const NumberRange& range) const;
  // False when nothing could be stored.
  bool Store(const GeneralSettings& values);
  void ApplyLanguage();

  const SettingsSurroundings& surroundings_;
  SessionLog& session_;
  SheetState& state_;
  LogonSystem storedSystem_ = LogonSystem::kNone;
  // 0: Windows accounts can be used.
  MessageId windowsHint_ = 0;
  BalloonTip windowsTip_;
  DWORD shownLanguage_ = 0;
  bool isFilled_ = false;
};

}  // namespace quillgate
