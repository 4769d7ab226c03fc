#include "ui/tray_icon.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>

namespace quillgate {
namespace {

constexpr wchar_t kClassName[] = L"QGTrayWindowClass";
constexpr UINT kCallbackMessage = WM_USER + 1;
constexpr UINT kBalloonMilliseconds = 10000;

// Copies as much of the text as fits, and fills the rest of the field with zeros.
template <std::size_t size>
void Copy(const std::wstring& text, WCHAR (&field)[size]) {
  const std::size_t length = std::min(text.size(), size - 1);
  std::copy_n(text.begin(), length, field);
  std::fill(field + length, field + size, L'\0');
}

NOTIFYICONDATAW HiddenRecord(HWND window) {
  NOTIFYICONDATAW record{};
  // Every notification area with balloons supports the members up to here.
  record.cbSize = offsetof(NOTIFYICONDATAW, guidItem);
  record.hWnd = window;
  record.uFlags = NIF_MESSAGE | NIF_TIP | NIF_STATE | NIF_INFO;
  record.uCallbackMessage = kCallbackMessage;
  record.dwState = NIS_HIDDEN;
  record.dwStateMask = NIS_HIDDEN;
  record.uTimeout = kBalloonMilliseconds;
  return record;
}

}  // namespace

TrayIcon::TrayIcon() : taskbarCreated_(::RegisterWindowMessageW(L"TaskbarCreated")) {
  RegisterWindowClass();
  window_ = ::CreateWindowExW(0, kClassName, L"", 0, 0, 0, 0, 0, nullptr, nullptr,
                              ::GetModuleHandleW(nullptr), this);
  if (window_ == nullptr) throw std::runtime_error("Could not create the tray window.");
  const CriticalSectionLock hold(lock_);
  record_ = HiddenRecord(window_);
  Send(NIM_ADD);
}

TrayIcon::~TrayIcon() {
  ::SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
  {
    const CriticalSectionLock hold(lock_);
    Send(NIM_DELETE);
  }
  icon_.Reset();
  ::DestroyWindow(window_);
}

void TrayIcon::RegisterWindowClass() {
  const HINSTANCE instance = ::GetModuleHandleW(nullptr);
  WNDCLASSW windowClass{};
  if (::GetClassInfoW(instance, kClassName, &windowClass)) return;
  windowClass = {};
  windowClass.lpfnWndProc = WindowProc;
  windowClass.hInstance = instance;
  windowClass.lpszClassName = kClassName;
  if (::RegisterClassW(&windowClass) == 0) {
    throw std::runtime_error("Could not register window class.");
  }
}

bool TrayIcon::ShowIcon() {
  const CriticalSectionLock hold(lock_);
  record_.dwState &= ~static_cast<DWORD>(NIS_HIDDEN);
  return Send(NIM_MODIFY);
}

bool TrayIcon::SetIconHandle(IconHandle icon) {
  const CriticalSectionLock hold(lock_);
  record_.uFlags |= NIF_ICON;
  record_.hIcon = icon.Get();
  const bool accepted = Send(NIM_MODIFY);
  // The previous icon was shown until now.
  icon_ = std::move(icon);
  return accepted;
}

bool TrayIcon::SetTipText(const std::wstring& text) {
  const CriticalSectionLock hold(lock_);
  Copy(text, record_.szTip);
  return Send(NIM_MODIFY);
}

bool TrayIcon::ShowBalloon(const std::wstring& text, const std::wstring& title, DWORD iconFlags) {
  const CriticalSectionLock hold(lock_);
  Copy(text, record_.szInfo);
  Copy(title, record_.szInfoTitle);
  record_.dwInfoFlags = iconFlags;
  const bool accepted = Send(NIM_MODIFY);
  if (!accepted && ::GetLastError() == ERROR_FILE_NOT_FOUND) {
    // The texts stay in the record until the balloon is shown.
    Send(NIM_ADD);
  } else {
    ClearBalloon();
  }
  return accepted;
}

void TrayIcon::ClearBalloon() {
  const CriticalSectionLock hold(lock_);
  Copy({}, record_.szInfo);
  Copy({}, record_.szInfoTitle);
}

void TrayIcon::AddAgain() {
  const CriticalSectionLock hold(lock_);
  Send(NIM_ADD);
}

bool TrayIcon::Send(DWORD message) {
  return ::Shell_NotifyIconW(message, &record_) != FALSE;
}

LRESULT CALLBACK TrayIcon::WindowProc(HWND window, UINT message, WPARAM wParam,
                                      LPARAM lParam) noexcept {
  try {
    if (message == WM_CREATE) {
      const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lParam);
      ::SetWindowLongPtrW(window, GWLP_USERDATA,
                          reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
    }
    auto* icon = reinterpret_cast<TrayIcon*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
    if (icon != nullptr) icon->Route(message, lParam);
  } catch (...) {
    // Handlers show their own failures; there is no other way to report one from here.
  }
  return ::DefWindowProcW(window, message, wParam, lParam);
}

void TrayIcon::Route(UINT message, LPARAM lParam) {
  if (message == kCallbackMessage) OnCallback(LOWORD(lParam));
  // The shell was restarted and has lost the icon.
  if (message == taskbarCreated_) AddAgain();
}

void TrayIcon::OnCallback(UINT event) {
  switch (event) {
    case WM_LBUTTONDOWN:
      OnButtonDown(MouseButton::kLeft);
      break;
    case WM_LBUTTONUP:
      OnButtonUp(MouseButton::kLeft);
      break;
    case WM_LBUTTONDBLCLK:
      OnDoubleClick();
      break;
    case WM_RBUTTONDOWN:
      OnButtonDown(MouseButton::kRight);
      break;
    case WM_RBUTTONUP:
      OnButtonUp(MouseButton::kRight);
      break;
    case NIN_BALLOONSHOW:
      ClearBalloon();
      break;
    case NIN_BALLOONUSERCLICK:
      OnBalloonClick();
      break;
    default:
      break;
  }
}

}  // namespace quillgate
