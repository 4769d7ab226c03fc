#include "platform/controls/basic_control.h"

#include <algorithm>
#include <cstdio>

#include "platform/kernel/log.h"
#include "platform/user/window_list.h"

namespace platform {
namespace {

// Sends WM_COMMAND to the current parent; ignored when the control has been destroyed.
void SendCommand(HWND control, WORD code) {
  const auto window = FindWindowOf(control);
  if (window == nullptr || window->Parent() == nullptr) return;
  ::SendMessageW(window->Parent(), WM_COMMAND, MAKEWPARAM(LOWORD(window->Id()), code),
                 reinterpret_cast<LPARAM>(control));
}

bool TakesFocus(const Window& window) {
  constexpr DWORD kNeeded = WS_TABSTOP | WS_VISIBLE;
  return (window.Style() & (kNeeded | WS_DISABLED)) == kNeeded && window.Peer() != nullptr;
}

}  // namespace

int CopyBounded(const std::wstring& text, wchar_t* buffer, int characters) {
  if (buffer == nullptr || characters <= 0) return 0;
  const int copied = std::min(characters - 1, static_cast<int>(text.size()));
  std::copy_n(text.begin(), copied, buffer);
  buffer[copied] = L'\0';
  return copied;
}

PeerOrigin BasicControl::Origin(WindowPeer* parent) const {
  return {window_.Events(), parent, window_.Style()};
}

void BasicControl::Command(WORD code) const {
  SendCommand(window_.Handle(), code);
}

void BasicControl::CommandLater(WORD code) const {
  window_.Queue()->Defer([control = window_.Handle(), code] { SendCommand(control, code); });
}

LRESULT BasicControl::SendNotification(HWND control, NMHDR* header) {
  const auto window = FindWindowOf(control);
  if (window == nullptr || window->Parent() == nullptr) return 0;
  return ::SendMessageW(window->Parent(), WM_NOTIFY, header->idFrom,
                        reinterpret_cast<LPARAM>(header));
}

void BasicControl::FocusNext() const {
  const auto siblings = Windows().ChildrenOf(window_.Parent());
  auto each = std::ranges::find(siblings, window_.Handle(), &Window::Handle);
  if (each == siblings.end()) return;
  each = std::find_if(std::next(each), siblings.end(),
                      [](const auto& sibling) { return TakesFocus(*sibling); });
  if (each != siblings.end()) (*each)->Peer()->Focus();
}

void BasicControl::Resize(int width, int height) const {
  const RECT& bounds = window_.Bounds();
  window_.SetBounds({bounds.left, bounds.top, bounds.left + width, bounds.top + height});
}

LRESULT BasicControl::Refuse(const char* control, UINT message, LRESULT failure) const {
  char text[80];
  std::snprintf(text, sizeof text, "%s: message 0x%04X: not supported", control, message);
  LogLine(text);
  return failure;
}

}  // namespace platform
