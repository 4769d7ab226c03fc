#include "wizard/restrictions_page.h"

#include "resources/resource.h"
#include "settings/hours_dialog.h"

namespace quillgate {
namespace {

constexpr LimitFields kLimit{IDC_RESTRICTIONS_LIMIT, IDC_RESTRICTIONS_LIMIT_AMOUNT,
                             IDC_RESTRICTIONS_LIMIT_PERIOD};

}  // namespace

RestrictionsPage::RestrictionsPage(const WizardSurroundings& surroundings, WizardState& state)
    : SetupPage(surroundings, state, IDD_SETUP_RESTRICTIONS,
                Header{kMsgRestrictionsTitle, kMsgRestrictionsSubtitle}) {}

LimitControls RestrictionsPage::Limit() const {
  return {Window(), kLimit};
}

bool RestrictionsPage::OnInitDialog(HWND) {
  Limit().LimitLength();
  Limit().ListPeriods(Catalogue());
  Limit().Show(State().CommonUser().TimeLimit());
  Limit().Enable(true);
  return true;
}

void RestrictionsPage::SetTexts(HWND) {
  constexpr ControlText kTexts[] = {{IDC_RESTRICTIONS_HOURS_HINT, kMsgRestrictionsHours},
                                    {IDC_RESTRICTIONS_HOURS, kMsgHoursButton},
                                    {IDC_RESTRICTIONS_LIMIT, kMsgEnableUsageLimit},
                                    {IDC_RESTRICTIONS_LIMIT_LABEL, kMsgAllow},
                                    {IDC_RESTRICTIONS_LIMIT_UNIT, kMsgMinutesPer}};
  ShowTexts(kTexts);
}

bool RestrictionsPage::OnCommand(int control, int code) {
  if (code != BN_CLICKED) return false;
  switch (control) {
    case IDC_RESTRICTIONS_LIMIT:
      Limit().Enable(true);
      return true;
    case IDC_RESTRICTIONS_HOURS:
      ChangeHours();
      return true;
    default:
      return false;
  }
}

void RestrictionsPage::ChangeHours() {
  User user = State().CommonUser();
  HoursDialog dialog(Surroundings().ui, Surroundings().settings, Sheet(), user.ConnectHours());
  if (!dialog.Run()) return;
  user.SetConnectHours(dialog.Hours());
  State().ReplaceCommonUser(std::move(user));
}

bool RestrictionsPage::Keep() {
  const LimitEntry entry = Limit().Entry();
  if (!IsAccepted(entry) && !ReadNumber(kLimit.amount, kLimitRange)) return false;
  User user = State().CommonUser();
  user.SetTimeLimit(LimitOf(entry, user.TimeLimit()));
  State().ReplaceCommonUser(std::move(user));
  return true;
}

}  // namespace quillgate
