// Property sheets as wizards.
#include <array>

#include "platform/dialog/button_captions.h"
#include "platform/dialog/dialog_control.h"
#include "platform/dialog/dialog_creation.h"
#include "platform/dialog/property_sheet.h"

namespace platform {
namespace {

constexpr LRESULT kStay = -1;

bool IsShown(HWND button) {
  return (static_cast<DWORD>(::GetWindowLongPtrW(button, GWL_STYLE)) & WS_VISIBLE) != 0;
}

BOOL Has(LPARAM buttons, LPARAM wanted) {
  return (buttons & wanted) != 0 ? TRUE : FALSE;
}

}  // namespace

void PropertySheet::LayOutAsWizard() {
  DialogControl& control = *FindDialog(sheet_).control;
  std::vector<HeaderText> headers;
  for (const Page& page : pages_)
    headers.push_back(HeaderOf(page));
  wizard_->LayOut(sheet_, LargestPage(false), LargestPage(true), headers, control.Units());
  const WizardLayout& layout = wizard_->Layout();
  PositionSheet(layout.sheet);
  MoveTo(Item(kBackButton), layout.back);
  MoveTo(Item(kNextButton), layout.next);
  MoveTo(Item(kFinishButton), layout.next);
  MoveTo(Item(IDCANCEL), layout.cancel);
  control.SetBackground([this](HDC context) { PaintWizardSheet(context); });
}

// Empty for an outer page.
HeaderText PropertySheet::HeaderOf(const Page& page) const {
  if (IsOuter(page)) return {};
  return {page.page->HeaderTitle(), page.page->HeaderSubTitle()};
}

void PropertySheet::PaintWizardSheet(HDC context) {
  wizard_->PaintLineAboveButtons(context);
  const Page* page = Current();
  if (page != nullptr && !IsOuter(*page)) wizard_->PaintBand(context, HeaderOf(*page));
}

// The title is the page's, else the wizard's.
void PropertySheet::ShowInWizard(const Page& page) {
  const std::wstring title = page.page->Title().value_or(page.made.title);
  ::SetWindowTextW(sheet_, title.empty() ? caption_.c_str() : title.c_str());
  ::InvalidateRect(sheet_, nullptr, TRUE);
  const HWND first = ::GetNextDlgTabItem(page.window, nullptr, FALSE);
  FocusFirst(sheet_, first != nullptr ? first : Item(ForwardButton()));
}

int PropertySheet::ForwardButton() const {
  return IsShown(Item(kFinishButton)) ? kFinishButton : kNextButton;
}

void PropertySheet::SetWizardButtons(LPARAM buttons) {
  const HWND focus = ::GetFocus();
  const BOOL isLast = Has(buttons, PSWIZB_FINISH | PSWIZB_DISABLEDFINISH);
  ::EnableWindow(Item(kBackButton), Has(buttons, PSWIZB_BACK));
  ::EnableWindow(Item(kNextButton), Has(buttons, PSWIZB_NEXT));
  ::EnableWindow(Item(kFinishButton), Has(buttons, PSWIZB_FINISH));
  ::ShowWindow(Item(kFinishButton), isLast != FALSE ? SW_SHOW : SW_HIDE);
  ::ShowWindow(Item(kNextButton), isLast != FALSE ? SW_HIDE : SW_SHOW);
  FocusInWizard(focus);
  ::SendMessageW(sheet_, DM_SETDEFID, static_cast<WPARAM>(ForwardButton()), 0);
}

// If the control is a wizard button that can no longer be pressed, moves the focus to the first
// button that can.
void PropertySheet::FocusInWizard(HWND control) {
  const std::array buttons = {ForwardButton(), kBackButton, IDCANCEL};
  const int id = ::GetParent(control) == sheet_ ? ::GetDlgCtrlID(control) : 0;
  const bool isButton = id == kBackButton || id == kNextButton || id == kFinishButton;
  if (!isButton || (::IsWindowEnabled(control) && IsShown(control))) return;
  for (const int button : buttons) {
    if (::IsWindowEnabled(Item(button))) return FindDialog(sheet_).control->GiveFocus(Item(button));
  }
}

bool PropertySheet::PressInWizard(int button) {
  switch (button) {
    case PSBTN_BACK:
      Advance(-1);
      return true;
    case PSBTN_NEXT:
      Advance(1);
      return true;
    case PSBTN_FINISH:
      Finish();
      return true;
    default:
      return false;
  }
}

// The current page must first agree to be left; its reply to PSN_WIZNEXT or PSN_WIZBACK then
// selects the page to show.
void PropertySheet::Advance(int step) {
  if (Current() == nullptr || !LetGo()) return;
  const LRESULT result = Notify(Current()->window, step > 0 ? PSN_WIZNEXT : PSN_WIZBACK);
  if (!IsOpen() || result == kStay) return;
  const std::size_t wanted =
      result == 0 ? *current_ + static_cast<std::size_t>(step) : IndexOfTemplate(result);
  const auto entered = Enter(wanted, step);
  if (entered.has_value()) Show(*entered);
}

// A reply other than zero keeps the wizard open; if it is a window, that gets the focus.
void PropertySheet::Finish() {
  if (Current() == nullptr || !LetGo()) return;
  const LRESULT result = Notify(Current()->window, PSN_WIZFINISH);
  if (!IsOpen()) return;
  const HWND control = reinterpret_cast<HWND>(result);
  if (result == 0) {
    ::EndDialog(sheet_, TRUE);
  } else if (::IsWindow(control)) {
    FindDialog(sheet_).control->GiveFocus(control);
  }
}

}  // namespace platform
