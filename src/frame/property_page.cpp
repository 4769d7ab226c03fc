#include "frame/property_page.h"

#include <algorithm>

#include "frame/property_sheet.h"

namespace quillgate {
namespace {

void CentreOnScreen(HWND window) {
  RECT workArea{};
  RECT bounds{};
  if (!::SystemParametersInfoW(SPI_GETWORKAREA, 0, &workArea, 0)) return;
  ::GetWindowRect(window, &bounds);
  const LONG width = bounds.right - bounds.left;
  const LONG height = bounds.bottom - bounds.top;
  const LONG left = std::max(workArea.left, (workArea.left + workArea.right - width) / 2);
  const LONG top = std::max(workArea.top, (workArea.top + workArea.bottom - height) / 2);
  ::SetWindowPos(window, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

PropertyPage::PropertyPage(const UiSurroundings& ui, UINT templateNumber, MessageId title,
                           std::wstring helpTopic)
    : DialogObject(ui, std::move(helpTopic)), templateNumber_(templateNumber), title_(title) {}

bool PropertyPage::OnQueryCancel() {
  return true;
}

HPROPSHEETPAGE PropertyPage::CreateHandle() {
  titleText_ = Catalogue().GetMessageText(title_);
  PROPSHEETPAGEW page{};
  page.dwSize = sizeof(page);
  page.dwFlags = PSP_USETITLE | PSP_PREMATURE;
  page.hInstance = ::GetModuleHandleW(nullptr);
  page.pszTemplate = MAKEINTRESOURCEW(templateNumber_);
  page.pszTitle = titleText_.c_str();
  page.pfnDlgProc = StaticPageProc;
  page.lParam = reinterpret_cast<LPARAM>(this);
  Complete(page);
  return ::CreatePropertySheetPageW(&page);
}

void PropertyPage::Activate() const {
  if (sheet_ != nullptr) sheet_->Activate(*this, ::GetParent(Window()));
}

void PropertyPage::MarkChanged() const {
  PropSheet_Changed(::GetParent(Window()), Window());
}

void PropertyPage::Complete(PROPSHEETPAGEW&) {}

INT_PTR CALLBACK PropertyPage::StaticPageProc(HWND window, UINT message, WPARAM wParam,
                                              LPARAM lParam) noexcept {
  if (message != WM_INITDIALOG) return Route(window, message, wParam, lParam);
  const auto* page = reinterpret_cast<const PROPSHEETPAGEW*>(lParam);
  // The sheet has its final size; the system chose its position. A wizard is already shown when its
  // later pages are created, and stays where the user has moved it.
  const HWND sheet = ::GetParent(window);
  if (!::IsWindowVisible(sheet)) CentreOnScreen(sheet);
  return reinterpret_cast<PropertyPage*>(page->lParam)->Begin(window);
}

bool PropertyPage::AnswerNotification(const NMHDR& header) {
  switch (header.code) {
    case PSN_APPLY:
      SetResult(Accepts(Window()) ? PSNRET_NOERROR : PSNRET_INVALID_NOCHANGEPAGE);
      return true;
    case PSN_SETACTIVE:
      OnActivated();
      SetResult(0);
      return true;
    case PSN_QUERYCANCEL: {
      const bool closes = OnQueryCancel();
      if (closes) CancelAll();
      SetResult(closes ? FALSE : TRUE);
      return true;
    }
    default:
      return OnNotify(header);
  }
}

void PropertyPage::RefreshTexts() {
  SetTexts(Window());
  if (sheet_ != nullptr) sheet_->RefreshTexts(::GetParent(Window()));
}

bool PropertyPage::Accepts(HWND window) noexcept {
  try {
    return OnApply(window);
  } catch (...) {
    ShowFailure();
    return false;
  }
}

}  // namespace quillgate
