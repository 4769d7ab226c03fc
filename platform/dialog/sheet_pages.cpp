// Creating and turning the pages of a property sheet.
#include <algorithm>

#include "platform/dialog/dialog_control.h"
#include "platform/dialog/dialog_creation.h"
#include "platform/dialog/property_sheet.h"
#include "platform/kernel/log.h"

namespace platform {
namespace {

constexpr LRESULT kNextPage = -1;

bool HasFocusInside(HWND page) {
  for (HWND window = ::GetFocus(); window != nullptr; window = ::GetParent(window)) {
    if (window == page) return true;
  }
  return false;
}

}  // namespace

bool PropertySheet::MakePage(Page& page) {
  PROPSHEETPAGEW& record = page.page->Record();
  const DialogOrigin origin = {record.hInstance, sheet_, record.pfnDlgProc,
                               reinterpret_cast<LPARAM>(&record), false};
  page.window = CreateDialogFrom(page.made, origin);
  if (page.window == nullptr) {
    LogLine("property sheet: a page cannot be made");
    if (IsOpen()) ::EndDialog(sheet_, -1);
    return false;
  }
  const RECT& bounds = IsWizard() ? wizard_->PageBounds(IsOuter(page)) : layout_.page;
  ::MoveWindow(page.window, bounds.left, bounds.top, bounds.right - bounds.left,
               bounds.bottom - bounds.top, FALSE);
  if (IsOuter(page))
    FindDialog(page.window).control->SetBackground([this](HDC context) {
      wizard_->PaintOuterPage(context);
    });
  return true;
}

bool PropertySheet::TurnTo(std::size_t index) {
  if (index >= pages_.size()) return false;
  if (current_ == index) return true;
  if (!LetGo()) return false;
  const auto entered = Enter(index);
  if (entered.has_value()) Show(*entered);
  return entered.has_value();
}

// Whether the current page agrees to be left; true when there is none.
bool PropertySheet::LetGo() {
  if (Current() == nullptr) return true;
  return Notify(Current()->window, PSN_KILLACTIVE) == FALSE && IsOpen();
}

// Activates a page and returns its index; nothing when no page accepts. With PSN_SETACTIVE a page
// may refuse: -1 requests the next page (the previous one when step is -1), any other number the
// page with that template.
std::optional<std::size_t> PropertySheet::Enter(std::size_t index, int step) {
  // At most one attempt for each page.
  for (std::size_t tries = 0; tries < pages_.size() && index < pages_.size(); ++tries) {
    Page& page = pages_[index];
    if (page.window == nullptr && !MakePage(page)) return std::nullopt;
    const LRESULT result = Notify(page.window, PSN_SETACTIVE);
    if (!IsOpen()) return std::nullopt;
    if (result == 0) return index;
    // The index before the first page wraps around to one beyond the last, which ends the loop.
    index = result == kNextPage ? index + static_cast<std::size_t>(step) : IndexOfTemplate(result);
  }
  return std::nullopt;
}

// One past the last page when no page has that template.
std::size_t PropertySheet::IndexOfTemplate(LRESULT number) const {
  const auto found = std::ranges::find_if(pages_, [&](const Page& each) {
    return each.page->Record().pszTemplate == MAKEINTRESOURCEW(number);
  });
  return static_cast<std::size_t>(found - pages_.begin());
}

void PropertySheet::Show(std::size_t index) {
  const HWND before = Current() != nullptr ? Current()->window : nullptr;
  const HWND shown = pages_[index].window;
  const bool movesFocus = before == nullptr || HasFocusInside(before);
  current_ = index;
  if (!IsWizard()) ::SendMessageW(PropSheet_GetTabControl(sheet_), TCM_SETCURSEL, index, 0);
  ::ShowWindow(shown, SW_SHOW);
  if (before != nullptr && before != shown) ::ShowWindow(before, SW_HIDE);
  if (IsWizard()) return ShowInWizard(pages_[index]);
  PositionButtons();
  // The focus moves to the first control of the page, else to the first button.
  if (movesFocus) FocusFirst(sheet_, ::GetNextDlgTabItem(shown, nullptr, FALSE));
}

void PropertySheet::Step(int step) {
  const std::size_t count = pages_.size();
  if (!current_.has_value() || count < 2) return;
  TurnTo(step > 0 ? (*current_ + 1) % count : (*current_ + count - 1) % count);
}

std::optional<std::size_t> PropertySheet::IndexOf(HWND page) const {
  const auto found = std::ranges::find(pages_, page, &Page::window);
  if (page == nullptr || found == pages_.end()) return std::nullopt;
  return static_cast<std::size_t>(found - pages_.begin());
}

PropertySheet::Page* PropertySheet::Current() {
  return current_.has_value() ? &pages_[*current_] : nullptr;
}

}  // namespace platform
