// The notification area of a desktop: there, not there, coming and going.
#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <shellapi.h>

#include <algorithm>
#include <functional>
#include <string_view>
#include <thread>
#include <vector>

#include "platform/kit/failing_call.h"
#include "platform/kit/hidden_window.h"
#include "platform/shell/tray_desktop.h"

namespace {

constexpr UINT kCallback = WM_APP + 1;
constexpr UINT kPatience = 20'000;  // milliseconds

// A window with an icon, on a thread of its own, which is the window thread of its desktop.
class IconOwner {
 public:
  static void Run(const std::function<void(IconOwner&)>& work) {
    std::thread([&] {
      IconOwner owner;
      work(owner);
    }).join();
  }

  BOOL Send(DWORD message, UINT flags, std::wstring_view balloon = L"") const {
    NOTIFYICONDATAW data{};
    data.cbSize = NOTIFYICONDATAW_V2_SIZE;
    data.hWnd = window_.Get();
    data.uFlags = flags | NIF_MESSAGE;
    data.uCallbackMessage = kCallback;
    std::ranges::copy(balloon, data.szInfo);
    return ::Shell_NotifyIconW(message, &data);
  }

  // Until the window has got the message.
  bool Await(UINT message) const {
    bool arrived = false;
    const UINT_PTR limit = ::SetTimer(nullptr, 0, kPatience, nullptr);
    MSG taken{};
    while (!arrived && ::GetMessageW(&taken, nullptr, 0, 0) > 0) {
      if (taken.message == WM_TIMER && taken.wParam == limit) break;
      arrived = taken.hwnd == window_.Get() && taken.message == message;
    }
    ::KillTimer(nullptr, limit);
    return arrived;
  }

  // Until the area knows the icon no more.
  bool AwaitLoss() const {
    const DWORD start = ::GetTickCount();
    while (Send(NIM_MODIFY, 0) && ::GetTickCount() - start < kPatience) {
      MSG message{};
      while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
      }
      ::Sleep(10);
    }
    return ::GetLastError() == ERROR_FILE_NOT_FOUND;
  }

 private:
  IconOwner() = default;

  const HiddenWindow window_;
};

// First, since the toolkit hears of areas through the first application of a process alone.
TEST(TrayOnDesktop, AProgramHearsOfAnAreaThatComesAndLosesItsIconWithOneThatGoes) {
  if (!TrayDesktop::IsInstalled()) GTEST_SKIP() << "needs Xvfb, openbox and tint2";
  TrayDesktop desktop;
  ASSERT_TRUE(desktop.IsRunning());
  IconOwner::Run([&](IconOwner& owner) {
    EXPECT_FALSE(owner.Send(NIM_ADD, 0));
    for (int round = 0; round < 2; ++round) {
      desktop.StartPanel();
      ASSERT_TRUE(owner.Await(::RegisterWindowMessageW(L"TaskbarCreated")));
      EXPECT_TRUE(owner.Send(NIM_ADD, 0));
      EXPECT_FALSE(owner.Send(NIM_ADD, 0));
      desktop.StopPanel();
      EXPECT_TRUE(owner.AwaitLoss());
    }
  });
}

TEST(TrayOnDesktop, WithoutAnAreaNoIconIsAddedAndBalloonsAreOnRecord) {
  ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
  IconOwner::Run([](IconOwner& owner) {
    ::testing::internal::CaptureStderr();
    for (const DWORD message : {NIM_ADD, NIM_MODIFY, NIM_DELETE})
      EXPECT_EQ(ErrorOf(owner.Send(message, NIF_INFO, L"Text")), ERROR_FILE_NOT_FOUND);
    EXPECT_THAT(::testing::internal::GetCapturedStderr(), ::testing::HasSubstr("balloon: : Text"));
  });
  ::unsetenv("QT_QPA_PLATFORM");
}

}  // namespace
