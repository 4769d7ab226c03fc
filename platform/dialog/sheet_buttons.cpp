// The buttons of a property sheet.
#include <algorithm>
#include <array>

#include "platform/dialog/button_captions.h"
#include "platform/dialog/property_sheet.h"
#include "platform/kernel/log.h"

namespace platform {

namespace {

struct ButtonNumbers {
  int id;
  int button;
};

constexpr std::array kNumbers = {
    ButtonNumbers{IDOK, PSBTN_OK},
    ButtonNumbers{IDCANCEL, PSBTN_CANCEL},
    ButtonNumbers{kApplyButton, PSBTN_APPLYNOW},
    ButtonNumbers{kBackButton, PSBTN_BACK},
    ButtonNumbers{kNextButton, PSBTN_NEXT},
    ButtonNumbers{kFinishButton, PSBTN_FINISH},
};

}  // namespace

void PropertySheet::OnButton(int id) {
  const auto* found = std::ranges::find(kNumbers, id, &ButtonNumbers::id);
  if (found != kNumbers.end()) Press(found->button);
}

void PropertySheet::Press(int button) {
  if (button == PSBTN_CANCEL) return Cancel(false);
  const bool isSupported = IsWizard() ? PressInWizard(button) : PressInSheet(button);
  if (!isSupported) LogLine("property sheet: button " + std::to_string(button) + ": not supported");
}

bool PropertySheet::PressInSheet(int button) {
  switch (button) {
    case PSBTN_OK:
      if (Apply(true)) ::EndDialog(sheet_, TRUE);
      return true;
    case PSBTN_APPLYNOW:
      Apply(false);
      return true;
    default:
      return false;
  }
}

// Sends PSN_APPLY to every page that has been created, in order, until one refuses.
bool PropertySheet::Apply(bool closing) {
  if (!LetGo()) return false;
  for (std::size_t i = 0; i < pages_.size(); ++i) {
    if (pages_[i].window == nullptr) continue;
    const LRESULT result = Notify(pages_[i].window, PSN_APPLY, closing ? TRUE : FALSE);
    if (!IsOpen()) return false;
    if (result == PSNRET_NOERROR) continue;
    if (result == PSNRET_INVALID && Enter(i) == i) Show(i);
    return false;
  }
  isSaved_ = true;
  for (Page& page : pages_)
    page.isChanged = false;
  ::EnableWindow(Item(kApplyButton), FALSE);
  if (!closing && Current() != nullptr) Notify(Current()->window, PSN_SETACTIVE);
  return IsOpen();
}

void PropertySheet::Cancel(bool byCloseBox) {
  if (Current() != nullptr && Notify(Current()->window, PSN_QUERYCANCEL) != FALSE) return;
  for (const Page& page : pages_) {
    if (IsOpen() && page.window != nullptr)
      Notify(page.window, PSN_RESET, byCloseBox ? TRUE : FALSE);
  }
  if (IsOpen()) ::EndDialog(sheet_, isSaved_ ? TRUE : FALSE);
}

void PropertySheet::SetChanged(HWND page, bool changed) {
  const auto index = IndexOf(page);
  if (!index.has_value()) return;
  pages_[*index].isChanged = changed;
  const bool any = std::ranges::any_of(pages_, &Page::isChanged);
  ::EnableWindow(Item(kApplyButton), hasApply_ && any ? TRUE : FALSE);
}

LRESULT PropertySheet::Notify(HWND page, UINT code, LPARAM parameter) const {
  PSHNOTIFY notification{{sheet_, 0, code}, parameter};
  return ::SendMessageW(page, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notification));
}

}  // namespace platform
