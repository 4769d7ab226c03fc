#include "ui/property_page.h"

namespace quillgate {

PropertyPage::PropertyPage(const UiSurroundings& ui, UINT templateNumber, std::wstring title,
                           std::wstring helpTopic)
    : DialogObject(ui, std::move(helpTopic)),
      templateNumber_(templateNumber),
      title_(std::move(title)) {}

HPROPSHEETPAGE PropertyPage::CreateHandle() {
  PROPSHEETPAGEW page{};
  page.dwSize = sizeof(page);
  page.dwFlags = PSP_USETITLE | PSP_PREMATURE;
  page.hInstance = ::GetModuleHandleW(nullptr);
  page.pszTemplate = MAKEINTRESOURCEW(templateNumber_);
  page.pszTitle = title_.c_str();
  page.pfnDlgProc = StaticPageProc;
  page.lParam = reinterpret_cast<LPARAM>(this);
  return ::CreatePropertySheetPageW(&page);
}

INT_PTR CALLBACK PropertyPage::StaticPageProc(HWND window, UINT message, WPARAM wParam,
                                              LPARAM lParam) noexcept {
  if (message != WM_INITDIALOG) return Route(window, message, wParam, lParam);
  const auto* page = reinterpret_cast<const PROPSHEETPAGEW*>(lParam);
  return reinterpret_cast<PropertyPage*>(page->lParam)->Begin(window);
}

INT_PTR PropertyPage::DialogProc(HWND window, UINT message, WPARAM, LPARAM lParam) {
  if (message != WM_NOTIFY) return FALSE;
  switch (reinterpret_cast<const NMHDR*>(lParam)->code) {
    case PSN_APPLY:
      ::SetWindowLongPtrW(window, DWLP_MSGRESULT,
                          Accepts(window) ? PSNRET_NOERROR : PSNRET_INVALID_NOCHANGEPAGE);
      return TRUE;
    case PSN_QUERYCANCEL:
      CancelAll();
      ::SetWindowLongPtrW(window, DWLP_MSGRESULT, FALSE);  // nothing keeps the sheet open
      return TRUE;
    default:
      return FALSE;
  }
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
