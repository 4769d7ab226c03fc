// The notification area of a desktop: there, not there, coming and going.
#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <shellapi.h>

#include <algorithm>
#include <functional>
#include <string_view>
#include <thread>

#include "platform/kit/failing_call.h"
#include "platform/kit/hidden_window.h"
#include "platform/shell/tray_desktop.h"

namespace {

constexpr UINT kPatience = 20'000;  // milliseconds

// With a window for an icon, on a thread of its own, which is the window thread of its desktop.
void RunWithOwner(const std::function<void(HWND owner)>& work) {
  std::thread([&] {
    const HiddenWindow owner;
    work(owner.Get());
  }).join();
}

// The last error, or 0 for success.
DWORD Notify(HWND owner, DWORD message, UINT flags = 0, std::wstring_view balloon = L"") {
  NOTIFYICONDATAW data{};
  data.cbSize = NOTIFYICONDATAW_V2_SIZE;
  data.hWnd = owner;
  data.uFlags = flags | NIF_MESSAGE;
  data.uCallbackMessage = WM_APP + 1;
  std::ranges::copy(balloon, data.szInfo);
  return ErrorOf(::Shell_NotifyIconW(message, &data));
}

// Takes messages until it holds, in time.
bool Await(const std::function<bool(const MSG& taken)>& holds) {
  const DWORD start = ::GetTickCount();
  while (::GetTickCount() - start < kPatience) {
    MSG taken{};
    ::PeekMessageW(&taken, nullptr, 0, 0, PM_REMOVE);
    if (holds(taken)) return true;
    ::Sleep(10);
  }
  return false;
}

// First, since the toolkit hears of areas through the first application of a process alone.
TEST(TrayOnDesktop, AProgramHearsOfAnAreaThatComesAndLosesItsIconWithOneThatGoes) {
  if (!TrayDesktop::IsInstalled()) GTEST_SKIP() << "needs Xvfb, openbox and tint2";
  TrayDesktop desktop;
  ASSERT_TRUE(desktop.IsRunning());
  const UINT created = ::RegisterWindowMessageW(L"TaskbarCreated");
  RunWithOwner([&](HWND owner) {
    EXPECT_EQ(Notify(owner, NIM_ADD), ERROR_FILE_NOT_FOUND);
    for (int round = 0; round < 2; ++round) {
      desktop.StartPanel();
      ASSERT_TRUE(
          Await([&](const MSG& taken) { return taken.hwnd == owner && taken.message == created; }));
      EXPECT_EQ(Notify(owner, NIM_ADD), NO_ERROR);
      EXPECT_EQ(Notify(owner, NIM_ADD), ERROR_ALREADY_EXISTS);
      desktop.StopPanel();
      EXPECT_TRUE(
          Await([&](const MSG&) { return Notify(owner, NIM_MODIFY) == ERROR_FILE_NOT_FOUND; }));
    }
  });
}

TEST(TrayOnDesktop, WithoutAnAreaNoIconIsAddedAndBalloonsAreOnRecord) {
  ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
  RunWithOwner([](HWND owner) {
    ::testing::internal::CaptureStderr();
    for (const DWORD message : {NIM_ADD, NIM_MODIFY, NIM_DELETE})
      EXPECT_EQ(Notify(owner, message, NIF_INFO, L"Text"), ERROR_FILE_NOT_FOUND);
    EXPECT_THAT(::testing::internal::GetCapturedStderr(), ::testing::HasSubstr("balloon: : Text"));
  });
  ::unsetenv("QT_QPA_PLATFORM");
}

}  // namespace
