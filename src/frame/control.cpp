#include "frame/control.h"

namespace quillgate {

std::wstring Control::Text() const {
  const int length = ::GetWindowTextLengthW(window_);
  std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
  const int copied = ::GetWindowTextW(window_, text.data(), length + 1);
  text.resize(static_cast<std::size_t>(copied));
  return text;
}

RECT Control::BoundsIn(HWND window) const {
  RECT bounds{};
  ::GetWindowRect(window_, &bounds);
  POINT corner{bounds.left, bounds.top};
  ::ScreenToClient(window, &corner);
  return {corner.x, corner.y, corner.x + bounds.right - bounds.left,
          corner.y + bounds.bottom - bounds.top};
}

void Control::MoveBy(int x, int y) const {
  RECT bounds{};
  if (!::GetWindowRect(window_, &bounds)) return;
  POINT corner{bounds.left, bounds.top};
  ::ScreenToClient(::GetParent(window_), &corner);
  ::SetWindowPos(window_, nullptr, corner.x + x, corner.y + y, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace quillgate
