#include "platform/dialog/property_page.h"

#include <algorithm>
#include <cstring>

#include "platform/dialog/dialog_resource.h"
#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"

namespace platform {
namespace {

constexpr DWORD kSupportedFlags =
    PSP_USETITLE | PSP_PREMATURE | PSP_HIDEHEADER | PSP_USEHEADERTITLE | PSP_USEHEADERSUBTITLE;
// Styles that the sheet sets or omits for a page.
constexpr DWORD kStylesOfWindows =
    WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_VISIBLE | WS_DISABLED | DS_MODALFRAME | DS_CENTER;

bool IsSupportedSize(DWORD size) {
  return size == PROPSHEETPAGEW_V1_SIZE || size == PROPSHEETPAGEW_V2_SIZE ||
         size == sizeof(PROPSHEETPAGEW);
}

bool IsNumber(LPCWSTR text) {
  return text != nullptr && IS_INTRESOURCE(text);
}

// Records of the first size have no header texts.
bool HasNumberedText(const PROPSHEETPAGEW& page) {
  if ((page.dwFlags & PSP_USETITLE) != 0 && IsNumber(page.pszTitle)) return true;
  if (page.dwSize < PROPSHEETPAGEW_V2_SIZE) return false;
  return ((page.dwFlags & PSP_USEHEADERTITLE) != 0 && IsNumber(page.pszHeaderTitle)) ||
         ((page.dwFlags & PSP_USEHEADERSUBTITLE) != 0 && IsNumber(page.pszHeaderSubTitle));
}

bool IsSupported(const PROPSHEETPAGEW& page) {
  if (!IsSupportedSize(page.dwSize)) {
    LogLine("property page: unknown size " + std::to_string(page.dwSize));
    return false;
  }
  if ((page.dwFlags & ~kSupportedFlags) != 0) {
    LogLine("property page: unsupported flags " + std::to_string(page.dwFlags));
    return false;
  }
  if (!HasNumberedText(page)) return true;
  LogLine("property page: titles from string tables are not supported");
  return false;
}

}  // namespace

PropertyPage::PropertyPage(const PROPSHEETPAGEW& given) {
  std::memcpy(&record_, &given, given.dwSize);
  Keep(title_, record_.pszTitle, PSP_USETITLE);
  Keep(headerTitle_, record_.pszHeaderTitle, PSP_USEHEADERTITLE);
  Keep(headerSubTitle_, record_.pszHeaderSubTitle, PSP_USEHEADERSUBTITLE);
}

void PropertyPage::Keep(std::wstring& text, LPCWSTR& given, DWORD flag) {
  if ((record_.dwFlags & flag) == 0) return;
  if (given != nullptr) text = given;
  given = text.c_str();
}

std::optional<std::wstring> PropertyPage::Title() const {
  if ((record_.dwFlags & PSP_USETITLE) == 0) return std::nullopt;
  return title_;
}

std::optional<DialogTemplate> PropertyPage::Template() const {
  auto dialogTemplate = FindDialogTemplate(record_.hInstance, record_.pszTemplate);
  if (!dialogTemplate.has_value()) return std::nullopt;
  dialogTemplate->style = (dialogTemplate->style & ~kStylesOfWindows) | WS_CHILD | DS_CONTROL;
  dialogTemplate->exStyle |= WS_EX_CONTROLPARENT;
  return dialogTemplate;
}

}  // namespace platform

using namespace platform;

HPROPSHEETPAGE WINAPI CreatePropertySheetPageW(LPCPROPSHEETPAGEW page) try {
  if (page == nullptr || !IsSupported(*page)) {
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return nullptr;
  }
  return static_cast<HPROPSHEETPAGE>(
      Handles().Insert(HandleKind::kPropertyPage, std::make_shared<PropertyPage>(*page)));
} catch (...) {
  return FailedCall<HPROPSHEETPAGE>(nullptr);
}

BOOL WINAPI DestroyPropertySheetPage(HPROPSHEETPAGE page) try {
  return Handles().Remove(HandleKind::kPropertyPage, page) != nullptr ? TRUE : FALSE;
} catch (...) {
  return FailedCall(FALSE);
}
