#include "wizard/type_page.h"

#include "frame/radio_group.h"
#include "resources/resource.h"

namespace quillgate {
namespace {

constexpr int kTypes[] = {IDC_TYPE_SIMPLE, IDC_TYPE_ADVANCED};

}  // namespace

TypePage::TypePage(const WizardSurroundings& surroundings, WizardState& state)
    : SetupPage(surroundings, state, IDD_SETUP_TYPE, Header{kMsgTypeTitle, kMsgTypeSubtitle}) {}

bool TypePage::OnInitDialog(HWND window) {
  RadioGroup(window, kTypes).Select(IDC_TYPE_SIMPLE);
  return true;
}

void TypePage::SetTexts(HWND) {
  constexpr ControlText kTexts[] = {{IDC_TYPE_EXPLANATION, kMsgTypeExplanation},
                                    {IDC_TYPE_SIMPLE, kMsgSimpleType},
                                    {IDC_TYPE_SIMPLE_TEXT, kMsgSimpleExplanation},
                                    {IDC_TYPE_ADVANCED, kMsgAdvancedType},
                                    {IDC_TYPE_ADVANCED_TEXT, kMsgAdvancedExplanation}};
  ShowTexts(kTexts);
}

bool TypePage::AcceptsNext() {
  State().ChooseType(RadioGroup(Window(), kTypes).Selection() == IDC_TYPE_SIMPLE);
  return true;
}

}  // namespace quillgate
