// Modal calls inside modal calls, driven by a script.
#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <atomic>
#include <thread>

#include "desktop/dialog_driver.h"
#include "platform/desktop/window_fixture.h"

namespace {

using ::testing::ElementsAre;

// The first button of a message box, whatever it says.
QWidget* FirstButton(DesktopScript& script, const QString& title) {
  QWidget* box = script.AwaitWindow(title);
  QWidget* button = nullptr;
  script.Do([&] { button = qobject_cast<QMessageBox*>(box)->buttons().at(0); });
  return button;
}

TEST_F(WindowOnDesktop, ABoxMayOpenInAMessageThatAnotherBoxServes) {
  DesktopScript script([](DesktopScript& user) {
    user.AwaitWindow("outer");
    QWidget* inner = FirstButton(user, "inner");
    user.Click(inner);
    user.AwaitNoWindow("inner");
    user.Click(FirstButton(user, "outer"));
  });
  std::vector<int> answers;
  OnWindowThread([&] {
    const HWND window = Create(L"", {}, 0);
    On(WM_APP, [&](HWND, WPARAM, LPARAM) -> LRESULT {
      answers.push_back(::MessageBoxW(nullptr, L"text", L"inner", MB_YESNO));
      return 0;
    });
    ::PostMessageW(window, WM_APP, 0, 0);
    answers.push_back(::MessageBoxW(nullptr, L"text", L"outer", MB_OK));
  });
  EXPECT_THAT(answers, ElementsAre(IDYES, IDOK));
}

TEST_F(WindowOnDesktop, TwoThreadsMayAskAtOnce) {
  DesktopScript script([](DesktopScript& user) {
    user.AwaitWindow("first");
    user.AwaitWindow("second");
    // The one that opened last is inside the other's loop, but either may be answered first.
    user.Click(FirstButton(user, "first"));
    user.AwaitNoWindow("first");
    user.Click(FirstButton(user, "second"));
  });
  std::atomic<int> sum = 0;
  std::vector<std::thread> askers;
  OnWindowThread([&] {
    Create(L"", {}, 0);
    std::atomic<int> left = 2;
    const DWORD owner = ::GetCurrentThreadId();
    for (const wchar_t* title : {L"first", L"second"}) {
      askers.emplace_back([&, title] {
        sum += ::MessageBoxW(nullptr, L"text", title, MB_OK);
        if (--left == 0) ::PostThreadMessageW(owner, WM_QUIT, 0, 0);
      });
    }
    MSG message;
    while (::GetMessageW(&message, nullptr, 0, 0) > 0)
      ::DispatchMessageW(&message);
    for (std::thread& each : askers)
      each.join();
  });
  EXPECT_EQ(sum, 2 * IDOK);
}

TEST_F(WindowOnDesktop, AScriptThatLooksForWhatIsNotThereEndsTheTestsLoops) {
  bool failed = false;
  int answer = -1;
  {
    // Its own failure is what is expected here.
    ::testing::TestPartResultArray results;
    const ::testing::ScopedFakeTestPartResultReporter reporter(
        ::testing::ScopedFakeTestPartResultReporter::INTERCEPT_ALL_THREADS, &results);
    DesktopScript script([](DesktopScript& user) { user.Child(user.AwaitWindow("box"), 4711); });
    OnWindowThread([&] { answer = ::MessageBoxW(nullptr, L"text", L"box", MB_OK); });
    failed = script.HasFailed();
  }
  EXPECT_TRUE(failed);
  EXPECT_EQ(answer, IDOK);
}

}  // namespace
