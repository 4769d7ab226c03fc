#include "wizard/system_page.h"

#include "accounts/windows_availability.h"
#include "frame/radio_group.h"
#include "resources/resource.h"

namespace quillgate {
namespace {

constexpr int kSystems[] = {IDC_CHOICE_NONE, IDC_CHOICE_QUILLGATE, IDC_CHOICE_WINDOWS};

LogonSystem SystemOf(int button) {
  switch (button) {
    case IDC_CHOICE_QUILLGATE:
      return LogonSystem::kQuillgate;
    case IDC_CHOICE_WINDOWS:
      return LogonSystem::kWindows;
    default:
      return LogonSystem::kNone;
  }
}

}  // namespace

SystemPage::SystemPage(const WizardSurroundings& surroundings, WizardState& state)
    : SetupPage(surroundings, state, IDD_SETUP_SYSTEM,
                Header{kMsgLogonSystem, kMsgSystemSubtitle}) {}

bool SystemPage::OnInitDialog(HWND window) {
  RadioGroup(window, kSystems).Select(IDC_CHOICE_NONE);
  const bool isAvailable = HasWindowsLogonPackage();
  for (const int control : {IDC_CHOICE_WINDOWS, IDC_CHOICE_WINDOWS_TEXT})
    Control(window, control).Enable(isAvailable);
  return true;
}

// The names of the two other systems stand in the template.
void SystemPage::SetTexts(HWND) {
  constexpr ControlText kTexts[] = {{IDC_CHOICE_EXPLANATION, kMsgSystemExplanation},
                                    {IDC_CHOICE_NONE, kMsgNoLogonSystem},
                                    {IDC_CHOICE_NONE_TEXT, kMsgNoneExplanation},
                                    {IDC_CHOICE_QUILLGATE_TEXT, kMsgQuillgateExplanation},
                                    {IDC_CHOICE_WINDOWS_TEXT, kMsgWindowsExplanation}};
  ShowTexts(kTexts);
}

bool SystemPage::AcceptsNext() {
  State().ChooseSystem(SystemOf(RadioGroup(Window(), kSystems).Selection()));
  return true;
}

}  // namespace quillgate
