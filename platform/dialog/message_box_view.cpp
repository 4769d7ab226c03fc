#include <windows.h>

#include <algorithm>
#include <array>

#include "platform/dialog/button_captions.h"
#include "platform/dialog/message_box.h"

namespace platform {
namespace {

constexpr UINT kButtonsMask = 0x0000000F;  // MB_TYPEMASK
constexpr UINT kIconMask = 0x000000F0;     // MB_ICONMASK
constexpr UINT kDefaultMask = 0x00000F00;  // MB_DEFMASK
constexpr UINT kOtherFlags = MB_SETFOREGROUND | MB_TOPMOST;

// Indexed by MB_OK, MB_OKCANCEL, MB_ABORTRETRYIGNORE, MB_YESNOCANCEL, MB_YESNO, MB_RETRYCANCEL.
// Zero: no further button.
constexpr std::array<std::array<int, 3>, 6> kButtons = {{
    {IDOK, 0, 0},
    {IDOK, IDCANCEL, 0},
    {IDABORT, IDRETRY, IDIGNORE},
    {IDYES, IDNO, IDCANCEL},
    {IDYES, IDNO, 0},
    {IDRETRY, IDCANCEL, 0},
}};

bool IsSupported(UINT type) {
  const UINT supported = kButtonsMask | kIconMask | kDefaultMask | kOtherFlags;
  return (type & ~supported) == 0 && (type & kButtonsMask) < kButtons.size() &&
         (type & kIconMask) <= MB_ICONINFORMATION && (type & kDefaultMask) <= MB_DEFBUTTON3;
}

int EscapeIdOf(const std::vector<MessageBoxButton>& buttons) {
  if (buttons.size() == 1) return buttons.front().id;
  const bool canCancel = std::ranges::count(buttons, IDCANCEL, &MessageBoxButton::id) > 0;
  return canCancel ? IDCANCEL : 0;
}

}  // namespace

std::optional<MessageBoxView> ViewOf(const MessageBoxRequest& request) {
  if (!IsSupported(request.type)) return std::nullopt;
  MessageBoxView view;
  view.text = request.text;
  view.caption = request.caption;
  view.icon = request.type & kIconMask;
  for (const int id : kButtons[request.type & kButtonsMask]) {
    if (id != 0) view.buttons.push_back({id, ButtonCaption(id)});
  }
  // The first button is the default when the box does not have the requested one.
  const std::size_t wanted = (request.type & kDefaultMask) / MB_DEFBUTTON2;
  view.defaultButton = wanted < view.buttons.size() ? wanted : 0;
  view.escapeId = EscapeIdOf(view.buttons);
  view.staysOnTop = (request.type & MB_TOPMOST) != 0;
  return view;
}

}  // namespace platform
