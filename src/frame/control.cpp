#include "frame/control.h"

#include "handles/gdi_handles.h"

namespace quillgate {

std::wstring Control::Text() const {
  const int length = ::GetWindowTextLengthW(window_);
  std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
  const int copied = ::GetWindowTextW(window_, text.data(), length + 1);
  text.resize(static_cast<std::size_t>(copied));
  return text;
}

int Control::TextWidth(const std::wstring& text) const {
  const WindowDc context(window_);
  const SelectedObject font(context.Get(), reinterpret_cast<HFONT>(Send(WM_GETFONT)));
  SIZE size{};
  ::GetTextExtentPoint32W(context.Get(), text.c_str(), static_cast<int>(text.size()), &size);
  return size.cx;
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
  if (!::IsWindow(window_)) return;
  const RECT bounds = BoundsIn(::GetParent(window_));
  ::SetWindowPos(window_, nullptr, bounds.left + x, bounds.top + y, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace quillgate
