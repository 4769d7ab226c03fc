// Icons and bitmaps from the executable's resources.
#include <windows.h>

#include <cstdint>
#include <cstdlib>
#include <map>
#include <mutex>
#include <optional>
#include <string>

#include "platform/gdi/bitmap.h"
#include "platform/gdi/gdi_objects.h"
#include "platform/gdi/icon_group.h"
#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"
#include "platform/kernel/resources.h"

namespace platform {
namespace {

constexpr std::uint16_t kBitmapType = 2;      // RT_BITMAP
constexpr std::uint16_t kIconType = 3;        // RT_ICON
constexpr std::uint16_t kIconGroupType = 14;  // RT_GROUP_ICON
constexpr int kSystemIconSize = 32;
constexpr int kLongestSide = 1024;
constexpr UINT kSupportedFlags = LR_DEFAULTCOLOR | LR_DEFAULTSIZE | LR_SHARED;

class Icon final : public Object {
 public:
  Icon(IconImages iconImages, bool isSharedIcon)
      : images(std::make_shared<const IconImages>(std::move(iconImages))), isShared(isSharedIcon) {}

  const std::shared_ptr<const IconImages> images;
  const bool isShared;
};

struct Request {
  std::uint16_t name = 0;
  int width = 0;  // zero: the image's own
  int height = 0;

  auto operator<=>(const Request&) const = default;
};

void* Fail(DWORD error) {
  ::SetLastError(error);
  return nullptr;
}

HICON LoadIconOf(const Request& request, bool isShared) {
  const ByteView group = FindResourceBytes(kIconGroupType, request.name);
  if (group.empty()) return nullptr;
  std::vector<Image> images = ReadIconGroup(
      group, [](std::uint16_t number) { return FindResourceBytes(kIconType, number); });
  if (images.empty()) return static_cast<HICON>(Fail(ERROR_RESOURCE_DATA_NOT_FOUND));
  const int width = request.width != 0 ? request.width : images.front().width;
  const int height = request.height != 0 ? request.height : images.front().height;
  auto icon = std::make_shared<Icon>(IconImages{width, height, std::move(images)}, isShared);
  return static_cast<HICON>(Handles().Insert(HandleKind::kIcon, std::move(icon)));
}

// Returns the same handle for the same request, as long as the process lives.
HICON LoadSharedIcon(const Request& request) {
  static std::mutex& mutex = *new std::mutex;
  static std::map<Request, HICON>& loaded = *new std::map<Request, HICON>;
  const std::lock_guard lock(mutex);
  const auto found = loaded.find(request);
  if (found != loaded.end()) return found->second;
  const HICON icon = LoadIconOf(request, true);
  if (icon != nullptr) loaded.emplace(request, icon);
  return icon;
}

struct InfoHeader {  // the beginning of a BITMAPINFOHEADER
  std::uint32_t size;
  std::int32_t width;
  std::int32_t height;  // negative: top-down rows
};

// Null when the bytes do not begin like a bitmap of a supported size.
std::optional<Image> ReadBitmap(ByteView bytes) {
  constexpr std::int32_t kLongestBitmapSide = 8192;
  const auto header = ReadAt<InfoHeader>(bytes, 0);
  const auto isSide = [](std::int32_t side) { return side > 0 && side <= kLongestBitmapSide; };
  if (!header.has_value() || header->height < -kLongestBitmapSide) return std::nullopt;
  const std::int32_t height = std::abs(header->height);
  if (!isSide(header->width) || !isSide(height)) return std::nullopt;
  return Image{ImageFormat::kBitmap, header->width, height, bytes};
}

HBITMAP LoadBitmapOf(const Request& request) {
  const ByteView bytes = FindResourceBytes(kBitmapType, request.name);
  if (bytes.empty()) return nullptr;
  const auto image = ReadBitmap(bytes);
  if (!image.has_value()) {
    LogLine("bitmap: picture " + std::to_string(request.name) + " cannot be read");
    return static_cast<HBITMAP>(Fail(ERROR_RESOURCE_DATA_NOT_FOUND));
  }
  const LONG width = request.width != 0 ? request.width : image->width;
  const LONG height = request.height != 0 ? request.height : image->height;
  return InsertBitmap(std::make_shared<Bitmap>(SIZE{width, height}, *image));
}

bool IsSide(int length) {
  return length >= 0 && length <= kLongestSide;
}

bool IsRequest(UINT type, int width, int height, UINT flags) {
  if ((flags & ~kSupportedFlags) == 0 && IsSide(width) && IsSide(height) &&
      (type == IMAGE_ICON || (type == IMAGE_BITMAP && (flags & LR_SHARED) == 0))) {
    return true;
  }
  LogLine("LoadImageW: only icons and bitmaps from resources");
  return false;
}

}  // namespace

std::shared_ptr<const IconImages> IconOf(HICON icon) {
  const auto found = Resolve<Icon>(HandleKind::kIcon, icon);
  return found != nullptr ? found->images : nullptr;
}

}  // namespace platform

extern "C" {

HANDLE WINAPI LoadImageW(HINSTANCE instance, LPCWSTR name, UINT type, int width, int height,
                         UINT flags) try {
  if (!platform::IsRequest(type, width, height, flags)) {
    return platform::Fail(ERROR_INVALID_PARAMETER);
  }
  // Resources are in the executable only, all of them numbered. There are no OEM images.
  if (instance != ::GetModuleHandleW(nullptr)) return platform::Fail(ERROR_RESOURCE_DATA_NOT_FOUND);
  if (!IS_INTRESOURCE(name)) return platform::Fail(ERROR_RESOURCE_NAME_NOT_FOUND);
  platform::Request request{LOWORD(reinterpret_cast<ULONG_PTR>(name)), width, height};
  const bool isIcon = type == static_cast<UINT>(IMAGE_ICON);
  if ((flags & LR_DEFAULTSIZE) != 0 && isIcon) {
    if (request.width == 0) request.width = platform::kSystemIconSize;
    if (request.height == 0) request.height = platform::kSystemIconSize;
  }
  if (!isIcon) return platform::LoadBitmapOf(request);
  return (flags & LR_SHARED) != 0 ? platform::LoadSharedIcon(request)
                                  : platform::LoadIconOf(request, false);
} catch (...) {
  return platform::FailedCall<HANDLE>(nullptr);
}

HICON WINAPI LoadIconW(HINSTANCE instance, LPCWSTR name) try {
  return static_cast<HICON>(
      ::LoadImageW(instance, name, IMAGE_ICON, 0, 0, LR_DEFAULTSIZE | LR_SHARED));
} catch (...) {
  return platform::FailedCall<HICON>(nullptr);
}

HBITMAP WINAPI LoadBitmapW(HINSTANCE instance, LPCWSTR name) try {
  return static_cast<HBITMAP>(::LoadImageW(instance, name, IMAGE_BITMAP, 0, 0, LR_DEFAULTCOLOR));
} catch (...) {
  return platform::FailedCall<HBITMAP>(nullptr);
}

BOOL WINAPI DestroyIcon(HICON icon) try {
  using platform::HandleKind;
  const auto found = platform::Resolve<platform::Icon>(HandleKind::kIcon, icon);
  if (found == nullptr) {
    ::SetLastError(ERROR_INVALID_CURSOR_HANDLE);
    return FALSE;
  }
  // A shared icon stays loaded.
  if (!found->isShared) platform::Handles().Remove(HandleKind::kIcon, icon);
  return TRUE;
} catch (...) {
  return platform::FailedCall(FALSE);
}

}  // extern "C"
