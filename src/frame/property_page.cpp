#include "frame/property_page.h"

#include <algorithm>

#include "frame/property_sheet.h"

namespace quillgate {
namespace {

void CentreOnScreen(HWND window) {
  RECT area{};
  RECT place{};
  if (!::SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0)) return;
  ::GetWindowRect(window, &place);
  const LONG width = place.right - place.left;
  const LONG height = place.bottom - place.top;
  const LONG left = std::max(area.left, (area.left + area.right - width) / 2);
  const LONG top = std::max(area.top, (area.top + area.bottom - height) / 2);
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

void PropertyPage::Complete(PROPSHEETPAGEW&) {}

INT_PTR CALLBACK PropertyPage::StaticPageProc(HWND window, UINT message, WPARAM wParam,
                                              LPARAM lParam) noexcept {
  if (message != WM_INITDIALOG) return Route(window, message, wParam, lParam);
  const auto* page = reinterpret_cast<const PROPSHEETPAGEW*>(lParam);
  // The sheet is as large as it will be, and not yet shown; it stands wherever the system puts it.
  CentreOnScreen(::GetParent(window));
  return reinterpret_cast<PropertyPage*>(page->lParam)->Begin(window);
}

bool PropertyPage::AnswerNotification(const NMHDR& header) {
  switch (header.code) {
    case PSN_APPLY:
      SetResult(Accepts(Window()) ? PSNRET_NOERROR : PSNRET_INVALID_NOCHANGEPAGE);
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
