#include "platform/qt/window_fixture.h"

#include <QApplication>
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>

namespace {

constexpr auto kLimit = std::chrono::seconds(10);
constexpr int kTurns = 20;

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

WindowOnDesktop::WindowOnDesktop() {
  ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
  current_ = this;
}

void WindowOnDesktop::OnWindowThread(const std::function<void()>& body) {
  std::thread(body).join();
}

void WindowOnDesktop::WithWindow(const std::function<void()>& body, const WindowTraits& traits) {
  OnWindowThread([&] {
    window_ = Create(WS_VISIBLE, kPlace, nullptr, traits);
    PumpUntilActive(window_);
    body();
  });
}

int WindowOnDesktop::CountOf(UINT message) const {
  return static_cast<int>(std::ranges::count(seen_, message));
}

HWND WindowOnDesktop::Create(DWORD style, RECT place, HWND parent, const WindowTraits& traits) {
  std::wstring name = L"Shown";
  for (const auto each : {reinterpret_cast<UINT_PTR>(traits.brush), UINT_PTR{traits.classStyle},
                          reinterpret_cast<UINT_PTR>(traits.cursor)})
    name += L"-" + std::to_wstring(each);
  WNDCLASSW windowClass{};
  windowClass.style = traits.classStyle;
  windowClass.lpfnWndProc = Procedure;
  windowClass.hCursor = traits.cursor != nullptr ? ::LoadCursorW(nullptr, traits.cursor) : nullptr;
  windowClass.hbrBackground = traits.brush;
  windowClass.lpszClassName = name.c_str();
  ::RegisterClassW(&windowClass);
  return ::CreateWindowExW(0, name.c_str(), L"", style | traits.style, place.left, place.top,
                           place.right - place.left, place.bottom - place.top, parent,
                           reinterpret_cast<HMENU>(static_cast<UINT_PTR>(traits.id)), nullptr,
                           nullptr);
}

HWND WindowOnDesktop::CreateButton(HWND parent, RECT place) {
  return ::CreateWindowExW(0, L"Button", L"Go", WS_CHILD | WS_VISIBLE, place.left, place.top,
                           place.right - place.left, place.bottom - place.top, parent, nullptr,
                           nullptr, nullptr);
}

void WindowOnDesktop::Pump(const std::function<bool()>& condition) {
  const auto limit = std::chrono::steady_clock::now() + kLimit;
  while (!condition()) {
    ASSERT_LT(std::chrono::steady_clock::now(), limit) << "it does not happen";
    if (!TakeMessages()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
}

void WindowOnDesktop::PumpAll() {
  for (int turn = 0; turn < kTurns; ++turn)
    TakeMessages();
}

void WindowOnDesktop::PumpUntilActive(HWND window) {
  Pump([&] { return QApplication::activeWindow() == WidgetOf(window); });
  PumpAll();
}

QWidget* WindowOnDesktop::WidgetOf(HWND window) {
  for (QWidget* each : QApplication::allWidgets()) {
    const auto handle = each->property("windowHandle").toULongLong();
    if (handle == reinterpret_cast<UINT_PTR>(window)) return each;
  }
  return nullptr;
}

COLORREF WindowOnDesktop::Seen(HWND window, int x, int y) {
  const QColor colour = WidgetOf(window)->grab().toImage().pixelColor(x, y);
  return RGB(colour.red(), colour.green(), colour.blue());
}

LRESULT CALLBACK WindowOnDesktop::Procedure(HWND window, UINT message, WPARAM wParam,
                                            LPARAM lParam) {
  if (current_ != nullptr) {
    current_->seen_.push_back(message);
    const auto found = current_->answers_.find(message);
    if (found != current_->answers_.end()) return found->second(window, wParam, lParam);
  }
  return ::DefWindowProcW(window, message, wParam, lParam);
}
