#include "platform/controls/static_control.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/controls/control_peers.h"
#include "platform/gdi/bitmap.h"
#include "platform/gdi/gdi_objects.h"
#include "platform/kernel/log.h"
#include "platform/user/desktop.h"

namespace platform {
namespace {

// The first character of a name whose second character is the number of a resource.
constexpr wchar_t kNumberFollows = 0xFFFF;

LPCWSTR ResourceName(const wchar_t* name) {
  return name[0] == kNumberFollows ? MAKEINTRESOURCEW(name[1]) : name;
}

}  // namespace

std::unique_ptr<WindowPeer> StaticControl::MakePeer(Window& /*window*/, WindowPeer* parent) {
  return DesktopSide<ControlSide>().Controls().MakeStatic(Origin(parent), *this);
}

std::optional<LRESULT> StaticControl::Answer(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_NCCREATE:
      if (IsSupported()) return std::nullopt;
      LogLine("Static: this style is not supported");
      return FALSE;
    case WM_CREATE:
      if (ShowsImage()) LoadNamedImage(*reinterpret_cast<const CREATESTRUCTW*>(lParam));
      return 0;
    case WM_DESTROY:
      if (ownBitmap_ != nullptr) ::DeleteObject(std::exchange(ownBitmap_, nullptr));
      return 0;
    case WM_GETDLGCODE:
      return DLGC_STATIC;
    case STM_SETICON:
      return SetImage(IMAGE_ICON, reinterpret_cast<void*>(wParam));
    case STM_GETICON:
      return Kind() == SS_ICON ? reinterpret_cast<LRESULT>(image_) : 0;
    case STM_SETIMAGE:
      return SetImage(static_cast<int>(wParam), reinterpret_cast<void*>(lParam));
    case STM_GETIMAGE:
      return wParam == (Kind() == SS_ICON ? IMAGE_ICON : IMAGE_BITMAP)
                 ? reinterpret_cast<LRESULT>(image_)
                 : 0;
    default:
      return std::nullopt;
  }
}

bool StaticControl::IsSupported() const {
  constexpr std::array kKinds = {SS_LEFT,           SS_CENTER, SS_RIGHT,     SS_ICON,
                                 SS_LEFTNOWORDWRAP, SS_BITMAP, SS_ETCHEDHORZ};
  return std::ranges::find(kKinds, Kind()) != kKinds.end();
}

void StaticControl::LoadNamedImage(const CREATESTRUCTW& creation) {
  Self().NoteText({});
  if (creation.lpszName == nullptr || creation.lpszName[0] == L'\0') return;
  const LPCWSTR name = ResourceName(creation.lpszName);
  if (Kind() == SS_ICON) {
    SetImage(IMAGE_ICON, ::LoadIconW(creation.hInstance, name));
  } else {
    HBITMAP loaded = ::LoadBitmapW(creation.hInstance, name);
    SetImage(IMAGE_BITMAP, loaded);
    ownBitmap_ = loaded;
  }
}

LRESULT StaticControl::SetImage(int type, void* image) {
  const bool isIcon = type == IMAGE_ICON && Kind() == SS_ICON;
  if (!isIcon && !(type == IMAGE_BITMAP && Kind() == SS_BITMAP)) return 0;
  const auto before = reinterpret_cast<LRESULT>(image_);
  image_ = image;
  ownBitmap_ = nullptr;
  if (isIcon) {
    ShowIcon(static_cast<HICON>(image));
  } else {
    ShowBitmap(static_cast<HBITMAP>(image));
  }
  return before;
}

void StaticControl::ShowIcon(HICON icon) {
  auto images = IconOf(icon);
  if (images != nullptr) TakeSize(images->width, images->height);
  if (Peer() != nullptr) Peer()->SetIcon(std::move(images));
}

void StaticControl::ShowBitmap(HBITMAP bitmap) {
  const auto shown = BitmapOf(bitmap);
  if (shown != nullptr) TakeSize(shown->Size().cx, shown->Size().cy);
  if (Peer() == nullptr) return;
  Peer()->SetPicture(shown != nullptr ? &shown->Surface(Desktop().Graphics()) : nullptr);
}

void StaticControl::TakeSize(int width, int height) {
  if ((Self().Style() & (SS_CENTERIMAGE | SS_REALSIZECONTROL)) != 0) return;
  Resize(width, height);
}

}  // namespace platform
