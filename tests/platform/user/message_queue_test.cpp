#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/kit/recording_window.h"

namespace {

class MessageQueueTest : public ::testing::Test {
 protected:
  void TearDown() override {
    while (Next() != WM_NULL) {
    }
  }
  static UINT Next() {
    MSG message{};
    return ::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) ? message.message : WM_NULL;
  }

  Recording recording_;
};

TEST_F(MessageQueueTest, PostedMessagesComeBeforeQuittingAndThatBeforeTimers) {
  const UINT_PTR timer = ::SetTimer(nullptr, 0, 10, nullptr);
  ::Sleep(20);
  ::PostQuitMessage(42);
  const DWORD before = ::GetTickCount();
  ::PostMessageW(nullptr, WM_APP, 1, 2);
  const DWORD after = ::GetTickCount();
  ::PostMessageW(nullptr, WM_APP + 1, 0, 0);

  MSG message{};
  EXPECT_NE(::GetMessageW(&message, nullptr, 0, 0), 0);
  EXPECT_EQ(message.message, WM_APP);
  EXPECT_EQ(message.hwnd, nullptr);
  EXPECT_EQ(message.wParam, 1u);
  EXPECT_EQ(message.lParam, 2);
  EXPECT_LE(message.time - before, after - before);
  EXPECT_EQ(Next(), WM_APP + 1);
  EXPECT_EQ(::GetMessageW(&message, nullptr, 0, 0), 0);
  EXPECT_EQ(message.message, WM_QUIT);
  EXPECT_EQ(message.wParam, 42u);
  EXPECT_EQ(Next(), WM_TIMER);
  EXPECT_TRUE(::KillTimer(nullptr, timer));
}

TEST_F(MessageQueueTest, APostedQuitKeepsItsPlaceAmongThePostedMessages) {
  for (const UINT message : {WM_APP, WM_QUIT, WM_APP + 1})
    ::PostThreadMessageW(::GetCurrentThreadId(), message, 3, 0);
  EXPECT_EQ(Next(), WM_APP);
  MSG message{};
  EXPECT_EQ(::GetMessageW(&message, nullptr, 0, 0), 0);
  EXPECT_EQ(message.wParam, 3u);
  EXPECT_EQ(Next(), WM_APP + 1);
}

TEST_F(MessageQueueTest, QuittingIsAFlagThatPassesEveryRangeOnce) {
  ::PostMessageW(nullptr, WM_APP, 0, 0);
  ::PostQuitMessage(1);
  ::PostQuitMessage(2);
  MSG message{};
  EXPECT_TRUE(::PeekMessageW(&message, nullptr, WM_USER, WM_USER + 1, PM_NOREMOVE));
  EXPECT_EQ(::GetMessageW(&message, nullptr, WM_USER, WM_USER + 1), 0);
  EXPECT_EQ(message.message, WM_QUIT);
  EXPECT_EQ(message.wParam, 2u);
  EXPECT_EQ(Next(), WM_APP);
  EXPECT_EQ(Next(), WM_NULL);
}

TEST_F(MessageQueueTest, AFilterTakesItsOwnAndLeavesTheRest) {
  const HWND first = Recording::Create();
  const HWND second = Recording::Create();
  ::PostMessageW(nullptr, WM_APP, 0, 0);
  ::PostMessageW(first, WM_APP + 1, 0, 0);
  ::PostMessageW(second, WM_APP + 2, 0, 0);
  const auto threadOnly = reinterpret_cast<HWND>(static_cast<LONG_PTR>(-1));
  const struct {
    HWND window;
    UINT first, last, remove, expected;
  } cases[] = {
      {second, 0, 0, PM_NOREMOVE, WM_APP + 2},
      {second, 0, 0, PM_REMOVE, WM_APP + 2},
      {nullptr, WM_APP + 1, WM_APP + 1, PM_REMOVE, WM_APP + 1},
      {first, 0, 0, PM_REMOVE, WM_NULL},
      {threadOnly, 0, 0, PM_REMOVE, WM_APP},
  };
  for (const auto& each : cases) {
    MSG message{};
    const bool found = ::PeekMessageW(&message, each.window, each.first, each.last, each.remove);
    EXPECT_EQ(found, each.expected != WM_NULL);
    EXPECT_EQ(message.message, each.expected);
  }
  EXPECT_EQ(Next(), WM_NULL);
}

TEST_F(MessageQueueTest, MessagesOfADestroyedWindowGoWithIt) {
  const HWND window = Recording::Create();
  ::PostMessageW(window, WM_APP, 0, 0);
  ::PostMessageW(nullptr, WM_APP + 1, 0, 0);
  ::DestroyWindow(window);
  EXPECT_EQ(Next(), WM_APP + 1);
  EXPECT_EQ(Next(), WM_NULL);
}

TEST_F(MessageQueueTest, AFullQueueRefusesMore) {
  int posted = 0;
  while (posted < 20'000 && ::PostMessageW(nullptr, WM_APP, 0, 0))
    ++posted;
  EXPECT_EQ(posted, 10'000);
  EXPECT_EQ(::GetLastError(), DWORD{ERROR_NOT_ENOUGH_QUOTA});
}

}  // namespace
