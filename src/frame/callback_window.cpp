#include "frame/callback_window.h"

#include <map>

namespace quillgate {
namespace {

constexpr wchar_t kClassName[] = L"QGCWindow";

std::map<HWND, CallbackWindow*>& WindowMap() {
  static std::map<HWND, CallbackWindow*> map;
  return map;
}

}  // namespace

CallbackWindow::~CallbackWindow() {
  if (window_ == nullptr) return;
  WindowMap().erase(window_);
  ::DestroyWindow(window_);
}

bool CallbackWindow::Create() {
  const HINSTANCE instance = ::GetModuleHandleW(nullptr);
  WNDCLASSEXW windowClass{};
  windowClass.cbSize = sizeof(windowClass);
  windowClass.lpfnWndProc = StaticProc;
  windowClass.hInstance = instance;
  windowClass.lpszClassName = kClassName;
  // Fails for every window but the first, because the class is registered already. Ignored.
  ::RegisterClassExW(&windowClass);
  window_ = ::CreateWindowExW(0, kClassName, L"", 0, 0, 0, 0, 0, nullptr, nullptr, instance, this);
  return window_ != nullptr;
}

LRESULT CALLBACK CallbackWindow::StaticProc(HWND window, UINT message, WPARAM wParam,
                                            LPARAM lParam) noexcept {
  try {
    return Route(window, message, wParam, lParam);
  } catch (...) {
    return ::DefWindowProcW(window, message, wParam, lParam);
  }
}

LRESULT CallbackWindow::Route(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_CREATE) {
    const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lParam);
    auto* object = static_cast<CallbackWindow*>(creation->lpCreateParams);
    object->window_ = window;
    WindowMap()[window] = object;
  }
  const auto found = WindowMap().find(window);
  if (found == WindowMap().end()) return ::DefWindowProcW(window, message, wParam, lParam);
  CallbackWindow* object = found->second;
  if (message == WM_NCDESTROY) {
    WindowMap().erase(found);
    object->window_ = nullptr;
  }
  return object->WindowProc(window, message, wParam, lParam);
}

}  // namespace quillgate
