#include "settings/general_page.h"

#include <algorithm>

#include "accounts/windows_availability.h"
#include "frame/check_box.h"
#include "frame/combo_box.h"
#include "frame/help_topics.h"
#include "frame/number_field.h"
#include "frame/radio_group.h"
#include "resources/resource.h"
#include "settings/stored_together.h"

namespace quillgate {
namespace {

// In the order in which they are examined.
constexpr int kSystemButtons[] = {IDC_SYSTEM_QUILLGATE, IDC_SYSTEM_WINDOWS, IDC_SYSTEM_NONE};

int ButtonOf(LogonSystem system) {
  switch (system) {
    case LogonSystem::kQuillgate:
      return IDC_SYSTEM_QUILLGATE;
    case LogonSystem::kWindows:
      return IDC_SYSTEM_WINDOWS;
    case LogonSystem::kNone:
      break;
  }
  return IDC_SYSTEM_NONE;
}

bool IsSystemButton(int control) {
  return std::ranges::find(kSystemButtons, control) != std::end(kSystemButtons);
}

// Whether a notification of a control means that the user has changed what it holds.
bool IsChange(int control, int code) {
  switch (control) {
    case IDC_TIME_WARNING_AMOUNT:
    case IDC_DOWNLOAD_WARNING_AMOUNT:
      return code == EN_CHANGE;
    case IDC_LANGUAGE:
      return code == CBN_SELCHANGE;
    default:
      return code == BN_CLICKED && (IsSystemButton(control) || control == IDC_TIME_WARNING ||
                                    control == IDC_DOWNLOAD_WARNING);
  }
}

}  // namespace

GeneralPage::GeneralPage(const SettingsSurroundings& surroundings, SessionLog& session,
                         SheetState& state)
    : PropertyPage(surroundings.ui, IDD_SETTINGS_GENERAL, kMsgGeneral, kTopicSettingsGeneral),
      surroundings_(surroundings),
      session_(session),
      state_(state) {}

bool GeneralPage::OnInitDialog(HWND window) {
  const GeneralSettings values = ReadGeneralSettings(surroundings_.settings);
  storedSystem_ = values.logonSystem;
  windowsHint_ = WindowsLogonHint(surroundings_.identity);
  RadioGroup(window, kSystemButtons).Select(ButtonOf(values.logonSystem));
  Control(window, IDC_SYSTEM_WINDOWS).Enable(windowsHint_ == 0);
  CheckBox(window, IDC_TIME_WARNING).Check(values.time.enabled);
  CheckBox(window, IDC_DOWNLOAD_WARNING).Check(values.download.enabled);
  for (const auto& [field, text] : {std::pair{IDC_TIME_WARNING_AMOUNT, values.time.threshold},
                                    {IDC_DOWNLOAD_WARNING_AMOUNT, values.download.threshold}}) {
    const NumberField edit(window, field);
    edit.LimitLength(NumberField::kMaximumLength);
    edit.SetText(text);
  }
  ListLanguages(values.language);
  shownLanguage_ = Entered().language;
  EnableThresholds();
  isFilled_ = true;
  return true;
}

void GeneralPage::ListLanguages(DWORD stored) const {
  const ComboBox list(Window(), IDC_LANGUAGE);
  const LanguageList languages = surroundings_.catalogue.GetLanguageList();
  for (const LanguageEntry& each : languages)
    list.Add(each.nativeName, PRIMARYLANGID(each.id));
  const auto shown = ShownLanguage(languages, stored, ::GetSystemDefaultLangID());
  if (shown) list.Select(static_cast<int>(*shown));
}

void GeneralPage::SetTexts(HWND) {
  constexpr ControlText kTexts[] = {
      {IDC_SYSTEM_GROUP, kMsgLogonSystem},
      {IDC_SYSTEM_NONE, kMsgNoLogonSystem},
      {IDC_WARNINGS_GROUP, kMsgWarnings},
      {IDC_TIME_WARNING, kMsgEnableTimeWarnings},
      {IDC_TIME_WARNING_LABEL, kMsgWarnWhen},
      {IDC_TIME_WARNING_UNIT, kMsgMinutesLeftUnit},
      {IDC_DOWNLOAD_WARNING, kMsgEnableDownloadWarnings},
      {IDC_DOWNLOAD_WARNING_LABEL, kMsgWarnWhen},
      {IDC_DOWNLOAD_WARNING_UNIT, kMsgMegabytesLeftUnit},
      {IDC_LANGUAGE_GROUP, kMsgLanguage},
      {IDC_LANGUAGE_LABEL, kMsgInterfaceLanguage},
  };
  ShowTexts(kTexts);
  ShowWindowsHint();
}

// Over the button, which is disabled, and 20 pixels around it.
void GeneralPage::ShowWindowsHint() {
  constexpr int kMargin = 20;
  if (windowsHint_ == 0) return;
  RECT area = Control(Window(), IDC_SYSTEM_WINDOWS).BoundsIn(Window());
  area = {area.left - kMargin, area.top - kMargin, area.right + kMargin, area.bottom + kMargin};
  windowsTip_.Show(Window(), area, Catalogue().GetMessageText(windowsHint_));
}

bool GeneralPage::OnCommand(int control, int code) {
  if (!isFilled_ || !IsChange(control, code)) return false;
  if (IsSystemButton(control)) state_.isSystemPending = ChosenSystem() != storedSystem_;
  EnableThresholds();
  MarkChanged();
  return true;
}

void GeneralPage::EnableThresholds() const {
  Control(Window(), IDC_TIME_WARNING_AMOUNT)
      .Enable(CheckBox(Window(), IDC_TIME_WARNING).IsChecked());
  Control(Window(), IDC_DOWNLOAD_WARNING_AMOUNT)
      .Enable(CheckBox(Window(), IDC_DOWNLOAD_WARNING).IsChecked());
}

LogonSystem GeneralPage::ChosenSystem() const {
  switch (RadioGroup(Window(), kSystemButtons).Selection()) {
    case IDC_SYSTEM_QUILLGATE:
      return LogonSystem::kQuillgate;
    case IDC_SYSTEM_WINDOWS:
      return LogonSystem::kWindows;
    default:
      return LogonSystem::kNone;
  }
}

GeneralSettings GeneralPage::Entered() const {
  GeneralSettings values;
  values.logonSystem = ChosenSystem();
  values.time = {CheckBox(Window(), IDC_TIME_WARNING).IsChecked(),
                 NumberField(Window(), IDC_TIME_WARNING_AMOUNT).Text()};
  values.download = {CheckBox(Window(), IDC_DOWNLOAD_WARNING).IsChecked(),
                     NumberField(Window(), IDC_DOWNLOAD_WARNING_AMOUNT).Text()};
  values.language = static_cast<DWORD>(ComboBox(Window(), IDC_LANGUAGE).SelectedData().value_or(0));
  return values;
}

bool GeneralPage::AreThresholdsValid() const {
  const GeneralSettings values = Entered();
  return IsThresholdValid(values.time, IDC_TIME_WARNING_AMOUNT, kWarningMinutes) &&
         IsThresholdValid(values.download, IDC_DOWNLOAD_WARNING_AMOUNT, kWarningMegabytes);
}

bool GeneralPage::IsThresholdValid(const WarningSetting& warning, int field,
                                   const NumberRange& range) const {
  if (!warning.enabled || range.Contains(ParseNumber(warning.threshold))) return true;
  Activate();
  return ReadNumber(field, range).has_value();
}

bool GeneralPage::OnApply(HWND) {
  if (!state_.IsOwnerLoggedOn()) return true;
  if (!AreThresholdsValid()) return false;
  if (Store(Entered())) ApplyLanguage();
  return true;
}

bool GeneralPage::Store(const GeneralSettings& values) {
  bool isThresholdNew = false;
  const bool switches = values.logonSystem != storedSystem_;
  const auto store = [&] {
    return StoredTogether(surroundings_.database, [&] {
      isThresholdNew = StoreGeneralSettings(values, surroundings_.settings);
      if (switches) StoreLogonSystem(values.logonSystem, surroundings_.settings);
    });
  };
  const bool isStored = switches ? surroundings_.logonSystem.Switch(store) : store();
  if (!isStored) return false;
  if (isThresholdNew) session_.ClearWarnings();
  if (switches) state_.FollowLogon();
  storedSystem_ = values.logonSystem;
  state_.isSystemPending = false;
  return true;
}

// The language that is shown at first need not be the interface's, see docs/behaviour.md.
void GeneralPage::ApplyLanguage() {
  const DWORD language = Entered().language;
  if (std::exchange(shownLanguage_, language) == language) return;
  surroundings_.catalogue.SetInterfaceLanguage(language);
  RefreshAllTexts();
}

}  // namespace quillgate
