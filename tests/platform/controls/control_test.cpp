#include "platform/controls/control_test.h"

#include <cstdlib>
#include <utility>

namespace {

constexpr const wchar_t* kClass = L"ParentOfControls";

ControlTest* current = nullptr;

}  // namespace

ControlTest::ControlTest() {
  ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
  current = this;
  WNDCLASSEXW windowClass{};
  windowClass.cbSize = sizeof windowClass;
  windowClass.lpfnWndProc = Procedure;
  windowClass.lpszClassName = kClass;
  ::RegisterClassExW(&windowClass);
  parent_ = ::CreateWindowExW(0, kClass, L"Parent", WS_VISIBLE, 0, 0, 400, 400, nullptr, nullptr,
                              nullptr, nullptr);
  QWidget* widget = WidgetOf(parent_);
  widget->activateWindow();
  EXPECT_TRUE(QTest::qWaitForWindowActive(widget));
  Settle();
}

ControlTest::~ControlTest() {
  ::DestroyWindow(parent_);
  Settle();
  ::UnregisterClassW(kClass, nullptr);
  current = nullptr;
}

HWND ControlTest::Make(const wchar_t* className, DWORD style, const wchar_t* text, int width,
                       int height) {
  const auto number = reinterpret_cast<HMENU>(static_cast<ULONG_PTR>(++made_));
  const bool isLabel = std::wstring_view(className) == L"STATIC";
  const DWORD all = WS_CHILD | WS_VISIBLE | (isLabel ? 0u : WS_TABSTOP) | style;
  HWND made = ::CreateWindowExW(0, className, text, all, 10, bottom_, width, height, parent_,
                                number, ::GetModuleHandleW(nullptr), nullptr);
  bottom_ += height;
  return made;
}

std::vector<std::string> ControlTest::Notified() {
  Settle();
  return NotifiedAtOnce();
}

std::vector<std::string> ControlTest::NotifiedAtOnce() {
  return std::exchange(notified_, {});
}

void ControlTest::Settle() {
  constexpr int kRounds = 4;  // a message may defer more work, which makes events
  for (int round = 0; round < kRounds; ++round) {
    MSG message;
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
      ::DispatchMessageW(&message);
  }
}

QWidget* ControlTest::WidgetOf(HWND window) {
  const qulonglong handle{reinterpret_cast<UINT_PTR>(window)};
  for (QWidget* widget : QApplication::allWidgets()) {
    if (widget->property("windowHandle") == QVariant(handle)) return widget;
  }
  return nullptr;
}

void ControlTest::Focus(HWND window) {
  WidgetOf(window)->setFocus();
  Settle();
}

LRESULT CALLBACK ControlTest::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (current != nullptr && (message == WM_COMMAND || message == WM_NOTIFY)) {
    return current->Receive(message, wParam, lParam);
  }
  return ::DefWindowProcW(window, message, wParam, lParam);
}

LRESULT ControlTest::Receive(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_COMMAND) {
    const int number = LOWORD(wParam);
    const int code = HIWORD(wParam);
    notified_.push_back("command " + std::to_string(number) + ' ' + std::to_string(code));
    if (onCommand) onCommand(number, code);
    return 0;
  }
  const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
  EXPECT_EQ(header.idFrom, wParam);
  EXPECT_TRUE(::IsWindow(header.hwndFrom));
  notified_.push_back("notify " + std::to_string(header.idFrom) + ' ' +
                      std::to_string(static_cast<int>(header.code)));
  return onNotify ? onNotify(header) : 0;
}

std::wstring TextOf(HWND window) {
  std::wstring text(200, L'\0');
  text.resize(static_cast<std::size_t>(
      ::SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
  return text;
}
