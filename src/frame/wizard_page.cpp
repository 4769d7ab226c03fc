#include "frame/wizard_page.h"

namespace quillgate {
namespace {

// Results of the notifications of the sheet.
constexpr LRESULT kStay = -1;
constexpr LRESULT kAccepted = 0;

}  // namespace

WizardPage::WizardPage(const UiSurroundings& ui, UINT templateNumber, MessageId title,
                       std::optional<Header> header, std::wstring helpTopic)
    : PropertyPage(ui, templateNumber, title, std::move(helpTopic)), header_(header) {}

DWORD WizardPage::Buttons() const {
  return PSWIZB_BACK | PSWIZB_NEXT;
}

std::optional<UINT> WizardPage::OnBack() {
  return {};
}

std::optional<UINT> WizardPage::OnNext() {
  return {};
}

bool WizardPage::OnFinish() {
  return true;
}

void WizardPage::OnSetActive() {}

void WizardPage::Complete(PROPSHEETPAGEW& page) {
  // The dialog is created when the page is first shown, because its contents depend on the pages
  // before it.
  page.dwFlags &= ~DWORD{PSP_PREMATURE};
  if (!header_) {
    page.dwFlags |= PSP_HIDEHEADER;
    return;
  }
  headerTitle_ = Catalogue().GetMessageText(header_->title);
  headerSubtitle_ = Catalogue().GetMessageText(header_->subtitle);
  page.dwFlags |= PSP_USEHEADERTITLE | PSP_USEHEADERSUBTITLE;
  page.pszHeaderTitle = headerTitle_.c_str();
  page.pszHeaderSubTitle = headerSubtitle_.c_str();
}

bool WizardPage::AnswerNotification(const NMHDR& header) {
  switch (header.code) {
    case PSN_SETACTIVE:
      PropSheet_SetWizButtons(::GetParent(Window()), Buttons());
      OnSetActive();
      SetResult(kAccepted);
      return true;
    case PSN_WIZBACK:
      SetResult(TargetOf(&WizardPage::OnBack));
      return true;
    case PSN_WIZNEXT:
      SetResult(TargetOf(&WizardPage::OnNext));
      return true;
    case PSN_WIZFINISH:
      SetResult(Finishes() ? FALSE : TRUE);
      return true;
    default:
      return PropertyPage::AnswerNotification(header);
  }
}

LRESULT WizardPage::TargetOf(Handler handler) noexcept {
  try {
    const std::optional<UINT> target = (this->*handler)();
    return target ? LRESULT{*target} : kStay;
  } catch (...) {
    ShowFailure();
    return kStay;
  }
}

bool WizardPage::Finishes() noexcept {
  try {
    return OnFinish();
  } catch (...) {
    ShowFailure();
    return false;
  }
}

}  // namespace quillgate
