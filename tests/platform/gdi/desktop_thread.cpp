#include "platform/gdi/desktop_thread.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <thread>

namespace {

constexpr const char* kVariables[] = {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};

std::string Platform() {
  static const std::string named = [] {
    const char* value = std::getenv("QT_QPA_PLATFORM");
    return std::string(value != nullptr ? value : "offscreen");
  }();
  return named;
}

}  // namespace

void OnDesktop(const std::function<void()>& work) {
  ::setenv("QT_QPA_PLATFORM", Platform().c_str(), 1);
  std::thread([&work] {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = ::DefWindowProcW;
    windowClass.lpszClassName = L"Hidden";
    ::RegisterClassW(&windowClass);
    const HWND window =
        ::CreateWindowExW(0, L"Hidden", L"", 0, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
    EXPECT_NE(window, nullptr);
    work();
    ::DestroyWindow(window);
  }).join();
}

void WithoutDesktop(const std::function<void()>& work) {
  Platform();
  for (const char* name : kVariables)
    ::unsetenv(name);
  std::thread(work).join();
}
