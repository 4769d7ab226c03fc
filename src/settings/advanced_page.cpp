#include "settings/advanced_page.h"

#include <utility>

#include "frame/check_box.h"
#include "frame/combo_box.h"
#include "frame/help_topics.h"
#include "resources/resource.h"
#include "settings/session_effects.h"
#include "settings/stored_together.h"

namespace quillgate {
namespace {

constexpr unsigned kDays = 7;

}  // namespace

AdvancedPage::AdvancedPage(const SettingsSurroundings& surroundings, SessionLog& session,
                           SheetState& state)
    : PropertyPage(surroundings.ui, IDD_SETTINGS_ADVANCED, kMsgAdvanced, kTopicSettingsAdvanced),
      surroundings_(surroundings),
      session_(session),
      state_(state) {}

bool AdvancedPage::OnInitDialog(HWND window) {
  stored_ = ReadAdvancedSettings(surroundings_.settings);
  ListAdapters(stored_.adapter);
  CheckBox(window, IDC_LOCAL_TRAFFIC).Check(stored_.localTrafficAllowed);
  CheckBox(window, IDC_STATISTICS_RESTRICTED).Check(stored_.statisticsForAdministrators);
  return true;
}

void AdvancedPage::ListAdapters(std::wstring_view chosen) {
  adapters_ = ListInstalledAdapters();
  const ComboBox list(Window(), IDC_ADAPTER);
  for (const AdapterEntry& each : adapters_) {
    const int index = list.Add(each.description);
    if (each.serviceName == chosen) list.Select(index);
  }
}

// The names of the days are texts too, so the list is filled here.
void AdvancedPage::SetTexts(HWND window) {
  constexpr ControlText kTexts[] = {
      {IDC_CALENDAR_GROUP, kMsgCalendar},
      {IDC_FIRST_DAY_LABEL, kMsgFirstDayOfWeek},
      {IDC_NETWORK_GROUP, kMsgNetworkConfiguration},
      {IDC_ADAPTER_LABEL, kMsgAdapterToUse},
      {IDC_LOCAL_TRAFFIC, kMsgLocalTrafficAllowed},
      {IDC_STATISTICS_RESTRICTED, kMsgStatisticsForAdministrators},
  };
  ShowTexts(kTexts);
  const ComboBox days(window, IDC_FIRST_DAY);
  const int selected = isFilled_ ? days.Selection() : ShownDay();
  days.Clear();
  for (unsigned day = 0; day < kDays; ++day)
    days.Add(Catalogue().GetMessageText(kMsgSunday + day));
  days.Select(selected);
  isFilled_ = true;
}

bool AdvancedPage::OnCommand(int control, int code) {
  const bool isList = control == IDC_FIRST_DAY || control == IDC_ADAPTER;
  const bool isBox = control == IDC_LOCAL_TRAFFIC || control == IDC_STATISTICS_RESTRICTED;
  if (!(isList && code == CBN_SELCHANGE) && !(isBox && code == BN_CLICKED)) return false;
  MarkChanged();
  return true;
}

// A Sunday that was taken from the locale is stored as 7, and stays that unless another day is
// chosen.
int AdvancedPage::ShownDay() const {
  return static_cast<int>(stored_.firstDay % kDays);
}

AdvancedSettings AdvancedPage::Entered() const {
  AdvancedSettings values = stored_;
  const int day = ComboBox(Window(), IDC_FIRST_DAY).Selection();
  if (day >= 0 && day != ShownDay()) values.firstDay = static_cast<std::uint32_t>(day);
  const int adapter = ComboBox(Window(), IDC_ADAPTER).Selection();
  if (adapter >= 0) values.adapter = adapters_[static_cast<std::size_t>(adapter)].serviceName;
  values.localTrafficAllowed = CheckBox(Window(), IDC_LOCAL_TRAFFIC).IsChecked();
  values.statisticsForAdministrators = CheckBox(Window(), IDC_STATISTICS_RESTRICTED).IsChecked();
  return values;
}

bool AdvancedPage::OnApply(HWND) {
  if (!state_.IsOwnerLoggedOn()) return true;
  const AdvancedSettings values = Entered();
  const bool isStored = StoredTogether(
      surroundings_.database, [&] { StoreAdvancedSettings(values, surroundings_.settings); });
  if (isStored) TakeEffect(std::exchange(stored_, values), values);
  return true;
}

void AdvancedPage::TakeEffect(const AdvancedSettings& before, const AdvancedSettings& values) {
  surroundings_.calendar.SetFirstDayOfWeek(static_cast<int>(values.firstDay));
  if (values.adapter != before.adapter) session_.SetAdapter(values.adapter);
  if (values.firstDay != before.firstDay ||
      values.localTrafficAllowed != before.localTrafficAllowed) {
    JudgeNow(session_);
  }
}

}  // namespace quillgate
