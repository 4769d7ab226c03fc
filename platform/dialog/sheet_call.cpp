// PropertySheetW.
#include <algorithm>

#include "platform/dialog/property_sheet.h"
#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"
#include "platform/user/modal_loop.h"
#include "platform/user/window.h"

namespace platform {
namespace {

constexpr INT_PTR kFailed = -1;
constexpr DWORD kBitmaps = PSH_WATERMARK | PSH_HEADER;
constexpr DWORD kSupportedFlags = PSH_PROPSHEETPAGE | PSH_NOAPPLYNOW | PSH_WIZARD97 | kBitmaps;
constexpr UINT kMostPages = 100;  // MAXPROPPAGES

// Only wizards show bitmaps, and only headers of the second size name any.
bool BitmapsAreSupported(const PROPSHEETHEADERW& header) {
  if ((header.dwFlags & kBitmaps) == 0) return true;
  return (header.dwFlags & PSH_WIZARD97) != 0 && header.dwSize == PROPSHEETHEADERW_V2_SIZE;
}

bool IsSupported(const PROPSHEETHEADERW& header) {
  const bool sizeIsSupported =
      header.dwSize == PROPSHEETHEADERW_V1_SIZE || header.dwSize == PROPSHEETHEADERW_V2_SIZE;
  const bool captionIsNumber = header.pszCaption != nullptr && IS_INTRESOURCE(header.pszCaption);
  const DWORD unsupported = header.dwFlags & ~kSupportedFlags;
  if (!sizeIsSupported || captionIsNumber || unsupported != 0 || !BitmapsAreSupported(header)) {
    LogLine("property sheet: unsupported size " + std::to_string(header.dwSize) + ", flags " +
            std::to_string(header.dwFlags) + " or caption from a string table");
    return false;
  }
  return header.nPages > 0 && header.nPages <= kMostPages && header.phpage != nullptr;
}

// The records are contiguous, each of the size in its dwSize.
HPROPSHEETPAGE PageOf(const PROPSHEETHEADERW& header, UINT index) {
  if ((header.dwFlags & PSH_PROPSHEETPAGE) == 0) return header.phpage[index];
  const auto* bytes = reinterpret_cast<const char*>(header.ppsp);
  for (UINT i = 0; i < index; ++i)
    bytes += reinterpret_cast<const PROPSHEETPAGEW*>(bytes)->dwSize;
  return ::CreatePropertySheetPageW(reinterpret_cast<const PROPSHEETPAGEW*>(bytes));
}

// Takes ownership of the pages and closes their handles. Empty when a handle is invalid.
std::vector<std::shared_ptr<PropertyPage>> TakePages(const PROPSHEETHEADERW& header) {
  std::vector<std::shared_ptr<PropertyPage>> pages;
  for (UINT i = 0; i < header.nPages; ++i) {
    const auto page = Handles().Remove(HandleKind::kPropertyPage, PageOf(header, i));
    pages.push_back(std::static_pointer_cast<PropertyPage>(page));
  }
  if (std::ranges::count(pages, nullptr) > 0) pages.clear();
  return pages;
}

INT_PTR ShowSheet(const PROPSHEETHEADERW& header) {
  auto pages = TakePages(header);
  if (pages.empty()) {
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return kFailed;
  }
  INT_PTR result = kFailed;
  DWORD error = ERROR_SUCCESS;
  const bool ran = RunOnWindowThread([&] {
    PropertySheet sheet(header, std::move(pages));
    result = sheet.Run();
    error = ::GetLastError();
  });
  if (!ran) {
    LogLine("PropertySheetW: there is no desktop to show a sheet on");
    error = ERROR_REQUIRES_INTERACTIVE_WINDOWSTATION;
  }
  if (result == kFailed) ::SetLastError(error);
  return result;
}

}  // namespace
}  // namespace platform

using namespace platform;

INT_PTR WINAPI PropertySheetW(LPCPROPSHEETHEADERW header) try {
  if (header == nullptr || !IsSupported(*header)) {
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return kFailed;
  }
  if (header->hwndParent != nullptr && FindWindowOf(header->hwndParent) == nullptr) return kFailed;
  return ShowSheet(*header);
} catch (...) {
  return FailedCall(-1);
}
