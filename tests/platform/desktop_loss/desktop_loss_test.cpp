// The display server answers nothing any more and then ends, while a program waits for an answer on
// it. In a process of its own: there is no desktop afterwards.
#include <windows.h>

#include <gtest/gtest.h>

#include <memory>
#include <thread>

#include "platform/kit/recording_window.h"
#include "platform/shell/tray_desktop.h"

namespace {

constexpr UINT kMilliseconds = 200;

std::unique_ptr<TrayDesktop> desktop;

void CALLBACK EndScreen(HWND, UINT, UINT_PTR timer, DWORD) {
  ::KillTimer(nullptr, timer);
  desktop->SendScreen(SIGSTOP);
  POINT place{};
  ::GetCursorPos(&place);
  desktop->SendScreen(SIGCONT);
  desktop.reset();
}

HWND ShownWindow() {
  return Recording::Create(L"before", nullptr, WS_POPUP | WS_VISIBLE, {20, 20, 220, 120});
}

TEST(DesktopLoss, WhatWaitsForAnAnswerReturnsAndTheThreadGoesOn) {
  if (!TrayDesktop::IsInstalled()) GTEST_SKIP() << "needs Xvfb, openbox and tint2";
  desktop = std::make_unique<TrayDesktop>();
  ASSERT_TRUE(desktop->IsRunning());
  Recording recording;
  std::thread([] {
    const HWND window = ShownWindow();
    ASSERT_NE(window, nullptr);
    ASSERT_NE(::GetSystemMetrics(SM_CXSCREEN), 0);

    ::SetTimer(nullptr, 0, kMilliseconds, EndScreen);
    EXPECT_EQ(::MessageBoxW(nullptr, L"Is anybody there?", L"Program", MB_YESNO), 0);
    EXPECT_EQ(desktop, nullptr);

    EXPECT_EQ(::GetSystemMetrics(SM_CXSCREEN), 0);
    EXPECT_EQ(::MessageBoxW(window, L"And now?", L"Program", MB_OK), 0);
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_REQUIRES_INTERACTIVE_WINDOWSTATION});

    const UINT_PTR timer = ::SetTimer(window, 1, kMilliseconds, nullptr);
    MSG message{};
    EXPECT_TRUE(::GetMessageW(&message, window, WM_TIMER, WM_TIMER));
    EXPECT_EQ(message.wParam, timer);
    EXPECT_TRUE(::SetWindowTextW(window, L"after"));
    WCHAR text[20] = L"";
    ::GetWindowTextW(window, text, 20);
    EXPECT_STREQ(text, L"after");
    ::ShowWindow(window, SW_HIDE);
    EXPECT_TRUE(::DestroyWindow(window));
    EXPECT_NE(ShownWindow(), nullptr);
  }).join();
}

}  // namespace
