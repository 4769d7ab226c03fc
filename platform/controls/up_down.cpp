#include "platform/controls/up_down.h"

#include <algorithm>
#include <cerrno>
#include <cwchar>
#include <iterator>
#include <limits>

#include "platform/controls/control_peers.h"
#include "platform/kernel/log.h"
#include "platform/user/desktop.h"
#include "platform/user/window_list.h"

namespace platform {
namespace {

constexpr DWORD kStyles = UDS_SETBUDDYINT | UDS_ALIGNRIGHT | UDS_ALIGNLEFT | UDS_AUTOBUDDY |
                          UDS_ARROWKEYS | UDS_HORZ | UDS_NOTHOUSANDS;
constexpr DWORD kOwnStyles = 0xFFFF;  // the low word is the class's own
constexpr UINT kFirstMessage = WM_USER + 101;
constexpr UINT kLastMessage = WM_USER + 114;
constexpr int kWidth = 17;   // pixels, beside a buddy
constexpr int kOverlap = 1;  // with the buddy's border

// Reads a whole number, with or without thousands separators; nothing for any other text.
std::optional<int> NumberIn(std::wstring text) {
  std::erase_if(text, [](wchar_t each) { return each == L',' || each == L'.' || each == 0xA0; });
  wchar_t* end = nullptr;
  errno = 0;
  const long number = std::wcstol(text.c_str(), &end, 10);
  if (text.empty() || *end != L'\0' || errno != 0) return std::nullopt;
  if (number < std::numeric_limits<int>::min() || number > std::numeric_limits<int>::max()) {
    return std::nullopt;
  }
  return static_cast<int>(number);
}

// The number with the user's thousands separators.
std::wstring Grouped(int number) {
  constexpr int kDecimals = 3;  // the point and the two digits of the user's format
  std::wstring plain = std::to_wstring(number);
  wchar_t text[64];
  const int length =
      ::GetNumberFormatW(LOCALE_USER_DEFAULT, 0, plain.c_str(), nullptr, text, std::size(text));
  // The length includes the terminating null.
  if (length <= kDecimals + 1) return plain;
  return {text, static_cast<std::size_t>(length - 1 - kDecimals)};
}

std::wstring TextOf(const Window& window) {
  std::wstring text(64, L'\0');
  const LRESULT length = ::SendMessageW(window.Handle(), WM_GETTEXT, text.size(),
                                        reinterpret_cast<LPARAM>(text.data()));
  // The buddy may be of any class and return anything.
  text.resize(static_cast<std::size_t>(std::clamp<LRESULT>(length, 0, 63)));
  return text;
}

}  // namespace

std::unique_ptr<WindowPeer> UpDown::MakePeer(Window& /*window*/, WindowPeer* parent) {
  return DesktopSide<ControlSide>().Controls().MakeUpDown(Origin(parent), *this);
}

std::optional<LRESULT> UpDown::Answer(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_NCCREATE:
      if ((Self().Style() & kOwnStyles & ~kStyles) == 0) return std::nullopt;
      LogLine("up-down control: this style is not supported");
      return FALSE;
    case WM_CREATE:
      if (Has(UDS_AUTOBUDDY)) TakeSiblingAsBuddy();
      return 0;
    case UDM_SETBUDDY:
      return SetBuddy(reinterpret_cast<HWND>(wParam));
    case UDM_GETBUDDY:
      return reinterpret_cast<LRESULT>(buddy_);
    case UDM_SETRANGE32:
      SetRange(static_cast<int>(wParam), static_cast<int>(lParam));
      return 0;
    case UDM_GETRANGE32:
      return GetRange(reinterpret_cast<int*>(wParam), reinterpret_cast<int*>(lParam));
    case UDM_SETPOS32:
      return SetPosition(static_cast<int>(lParam));
    case UDM_GETPOS32:
      return GetPosition(reinterpret_cast<BOOL*>(lParam));
    default:
      if (message < kFirstMessage || message > kLastMessage) return std::nullopt;
      return Refuse("up-down control", message, 0);
  }
}

void UpDown::OnStep(bool up) {
  Later<UpDown>([up](UpDown& self) {
    // The upper arrow moves towards the upper end of the range, which may be the smaller number.
    const bool increases = up == (self.high_ >= self.low_);
    self.Step(increases ? 1 : -1);
  });
}

LRESULT UpDown::SetBuddy(HWND buddy) {
  const auto before = reinterpret_cast<LRESULT>(buddy_);
  const auto found = Resolve<Window>(HandleKind::kWindow, buddy);
  buddy_ = found != nullptr ? buddy : nullptr;
  if (Peer() != nullptr) {
    Peer()->TakeArrowKeysOf(found != nullptr && Has(UDS_ARROWKEYS) ? found->Peer() : nullptr);
  }
  if (found != nullptr && Has(UDS_ALIGNRIGHT | UDS_ALIGNLEFT)) MoveBesideBuddy(*found);
  return before;
}

void UpDown::TakeSiblingAsBuddy() {
  // The control that was created just before this one.
  const auto siblings = Windows().ChildrenOf(Self().Parent());
  const auto own = std::ranges::find(siblings, Self().Handle(), &Window::Handle);
  if (own != siblings.begin() && own != siblings.end()) SetBuddy((*std::prev(own))->Handle());
}

void UpDown::MoveBesideBuddy(Window& buddy) {
  RECT field = buddy.Bounds();
  RECT own = Self().Bounds();
  own.top = field.top;
  own.bottom = field.bottom;
  if (Has(UDS_ALIGNRIGHT)) {
    own.right = field.right;
    own.left = own.right - kWidth;
    field.right = own.left + kOverlap;
  } else {
    own.left = field.left;
    own.right = own.left + kWidth;
    field.left = own.right - kOverlap;
  }
  buddy.SetBounds(field);
  Self().SetBounds(own);
}

void UpDown::SetRange(int low, int high) {
  low_ = low;
  high_ = high;
}

LRESULT UpDown::GetRange(int* low, int* high) const {
  if (low != nullptr) *low = low_;
  if (high != nullptr) *high = high_;
  return 0;
}

LRESULT UpDown::SetPosition(int position) {
  const int before = position_;
  position_ = Bounded(position);
  ShowInBuddy();
  return before;
}

LRESULT UpDown::GetPosition(BOOL* failed) {
  const bool read = !Has(UDS_SETBUDDYINT) || ReadBuddy();
  if (failed != nullptr) *failed = read ? FALSE : TRUE;
  return position_;
}

int UpDown::Bounded(long long position) const {
  const auto [least, most] = std::minmax(low_, high_);
  return static_cast<int>(std::clamp<long long>(position, least, most));
}

void UpDown::ShowInBuddy() {
  if (!Has(UDS_SETBUDDYINT) || FindWindowOf(buddy_) == nullptr) return;
  const std::wstring text = Has(UDS_NOTHOUSANDS) ? std::to_wstring(position_) : Grouped(position_);
  ::SendMessageW(buddy_, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

bool UpDown::ReadBuddy() {
  const auto buddy = FindWindowOf(buddy_);
  const auto number = buddy != nullptr ? NumberIn(TextOf(*buddy)) : std::nullopt;
  if (!number.has_value() || Bounded(*number) != *number) return false;
  position_ = *number;
  return true;
}

void UpDown::Step(int delta) {
  if (Has(UDS_SETBUDDYINT)) ReadBuddy();
  NMUPDOWN notification{};
  notification.iPos = position_;
  notification.iDelta = delta;
  // A nonzero reply keeps the position; the parent may also have changed the step.
  if (Notify(UDN_DELTAPOS, notification) != 0 || !Self().IsLive()) return;
  position_ = Bounded(static_cast<long long>(position_) + notification.iDelta);
  ShowInBuddy();
}

}  // namespace platform
