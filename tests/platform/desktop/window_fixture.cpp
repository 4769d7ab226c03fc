#include "platform/desktop/window_fixture.h"

#include <QApplication>
#include <algorithm>
#include <chrono>
#include <thread>

namespace {

constexpr auto kLimit = std::chrono::seconds(10);
constexpr int kTurns = 20;

WindowOnDesktop* current = nullptr;

bool TakeMessages() {
  MSG message;
  bool took = false;
  while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    ::TranslateMessage(&message);
    ::DispatchMessageW(&message);
    took = true;
  }
  return took;
}

}  // namespace

void WindowOnDesktop::SetUp() {
  current = this;
}

void WindowOnDesktop::TearDown() {
  current = nullptr;
}

void WindowOnDesktop::OnWindowThread(const std::function<void()>& body) {
  std::thread(body).join();
}

HWND WindowOnDesktop::Create(const wchar_t* title, RECT place, DWORD style, HWND parent, int id,
                             HBRUSH brush, UINT classStyle) {
  std::wstring name = L"Shown" + std::to_wstring(reinterpret_cast<UINT_PTR>(brush));
  if (classStyle != 0) name += L"-" + std::to_wstring(classStyle);
  WNDCLASSEXW windowClass{};
  windowClass.cbSize = sizeof windowClass;
  windowClass.style = classStyle;
  windowClass.lpfnWndProc = Procedure;
  windowClass.lpszClassName = name.c_str();
  windowClass.hbrBackground = brush;
  ::RegisterClassExW(&windowClass);
  return ::CreateWindowExW(0, name.c_str(), title, style, place.left, place.top,
                           place.right - place.left, place.bottom - place.top, parent,
                           reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), nullptr, nullptr);
}

int WindowOnDesktop::CountOf(UINT message) const {
  return static_cast<int>(std::ranges::count(seen_, message));
}

bool WindowOnDesktop::Pump(const std::function<bool()>& condition) {
  const auto limit = std::chrono::steady_clock::now() + kLimit;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > limit) {
      ADD_FAILURE() << "it does not happen";
      return false;
    }
    if (!TakeMessages()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

void WindowOnDesktop::PumpAll() {
  for (int turn = 0; turn < kTurns; ++turn)
    TakeMessages();
}

QWidget* WindowOnDesktop::WidgetOf(HWND window) {
  for (QWidget* each : QApplication::allWidgets()) {
    const auto handle = each->property("windowHandle").toULongLong();
    if (handle == reinterpret_cast<UINT_PTR>(window)) return each;
  }
  return nullptr;
}

LRESULT CALLBACK WindowOnDesktop::Procedure(HWND window, UINT message, WPARAM wParam,
                                            LPARAM lParam) {
  if (current != nullptr) {
    current->seen_.push_back(message);
    const auto found = current->answers_.find(message);
    if (found != current->answers_.end()) return found->second(window, wParam, lParam);
  }
  return ::DefWindowProcW(window, message, wParam, lParam);
}
