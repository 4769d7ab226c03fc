#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/testing/simulated_machine.h"
#include "platform/user/recording_window.h"

namespace {

using ::testing::ElementsAre;

class MessageQueueTest : public ::testing::Test {
 protected:
  void TearDown() override {
    MSG message;
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    }
  }
  static UINT Next() {
    MSG message{};
    return ::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) ? message.message : WM_NULL;
  }

  platform::SimulatedMachine machine_;
  Recording recording_;
};

TEST_F(MessageQueueTest, PostedMessagesComeBeforeQuittingAndThatBeforeTimers) {
  const UINT_PTR timer = ::SetTimer(nullptr, 0, 10, nullptr);
  machine_.Time().Advance(std::chrono::milliseconds(10));
  ::PostQuitMessage(42);
  ::PostMessageW(nullptr, WM_APP, 1, 2);
  ::PostMessageW(nullptr, WM_APP + 1, 0, 0);

  MSG message{};
  EXPECT_NE(::GetMessageW(&message, nullptr, 0, 0), 0);
  EXPECT_EQ(message.message, WM_APP);
  EXPECT_EQ(message.hwnd, nullptr);
  EXPECT_EQ(message.wParam, 1u);
  EXPECT_EQ(message.lParam, 2);
  EXPECT_EQ(message.time, ::GetTickCount());
  EXPECT_NE(::GetMessageW(&message, nullptr, 0, 0), 0);
  EXPECT_EQ(message.message, WM_APP + 1);
  EXPECT_EQ(::GetMessageW(&message, nullptr, 0, 0), 0);
  EXPECT_EQ(message.message, WM_QUIT);
  EXPECT_EQ(message.wParam, 42u);
  EXPECT_NE(::GetMessageW(&message, nullptr, 0, 0), 0);
  EXPECT_EQ(message.message, WM_TIMER);
  EXPECT_TRUE(::KillTimer(nullptr, timer));
}

TEST_F(MessageQueueTest, APostedQuitKeepsItsPlaceAmongThePostedMessages) {
  ::PostThreadMessageW(::GetCurrentThreadId(), WM_APP, 0, 0);
  ::PostThreadMessageW(::GetCurrentThreadId(), WM_QUIT, 3, 0);
  ::PostThreadMessageW(::GetCurrentThreadId(), WM_APP + 1, 0, 0);
  MSG message{};
  EXPECT_NE(::GetMessageW(&message, nullptr, 0, 0), 0);
  EXPECT_EQ(::GetMessageW(&message, nullptr, 0, 0), 0);
  EXPECT_EQ(message.wParam, 3u);
  EXPECT_EQ(Next(), WM_APP + 1);
}

TEST_F(MessageQueueTest, QuittingIsAFlagAndComesOnce) {
  ::PostQuitMessage(1);
  ::PostQuitMessage(2);
  MSG message{};
  EXPECT_TRUE(::PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE));
  EXPECT_EQ(::GetMessageW(&message, nullptr, 0, 0), 0);
  EXPECT_EQ(message.wParam, 2u);
  EXPECT_EQ(Next(), WM_NULL);
}

TEST_F(MessageQueueTest, LookingDoesNotRemove) {
  ::PostMessageW(nullptr, WM_APP, 0, 0);
  MSG message{};
  EXPECT_TRUE(::PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE));
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
    UINT first, last, expected;
  } cases[] = {
      {second, 0, 0, WM_APP + 2},
      {nullptr, WM_APP + 1, WM_APP + 1, WM_APP + 1},
      {first, 0, 0, WM_NULL},
      {threadOnly, 0, 0, WM_APP},
  };
  for (const auto& each : cases) {
    MSG message{};
    const bool found = ::PeekMessageW(&message, each.window, each.first, each.last, PM_REMOVE);
    EXPECT_EQ(found, each.expected != WM_NULL);
    EXPECT_EQ(message.message, each.expected);
  }
  ::DestroyWindow(first);
  ::DestroyWindow(second);
}

TEST_F(MessageQueueTest, QuittingPassesEveryRange) {
  ::PostMessageW(nullptr, WM_APP, 0, 0);
  ::PostQuitMessage(0);
  MSG message{};
  EXPECT_EQ(::GetMessageW(&message, nullptr, WM_USER, WM_USER + 1), 0);
  EXPECT_EQ(message.message, WM_QUIT);
  EXPECT_EQ(Next(), WM_APP);
}

TEST_F(MessageQueueTest, MessagesOfADestroyedWindowGoWithIt) {
  const HWND window = Recording::Create();
  ::PostMessageW(window, WM_APP, 0, 0);
  ::PostMessageW(nullptr, WM_APP + 1, 0, 0);
  ::DestroyWindow(window);
  EXPECT_EQ(Next(), WM_APP + 1);
  EXPECT_EQ(Next(), WM_NULL);
}

TEST_F(MessageQueueTest, DispatchingCallsTheWindowsProcedure) {
  recording_.On(WM_APP, [](HWND, UINT, WPARAM wParam, LPARAM lParam) -> LRESULT {
    return static_cast<LRESULT>(wParam) + lParam;
  });
  const HWND window = Recording::Create();
  MSG message{};
  message.hwnd = window;
  message.message = WM_APP;
  message.wParam = 3;
  message.lParam = 4;
  EXPECT_EQ(::DispatchMessageW(&message), 7);
  ::DestroyWindow(window);
  EXPECT_EQ(::DispatchMessageW(&message), 0);
}

TEST_F(MessageQueueTest, AFullQueueRefusesMore) {
  int posted = 0;
  while (posted < 20'000 && ::PostMessageW(nullptr, WM_APP, 0, 0))
    ++posted;
  EXPECT_EQ(posted, 10'000);
  EXPECT_EQ(::GetLastError(), ERROR_NOT_ENOUGH_QUOTA);
}

TEST_F(MessageQueueTest, UnknownPeekFlagsAreRefused) {
  ::PostMessageW(nullptr, WM_APP, 0, 0);
  MSG message{};
  EXPECT_FALSE(::PeekMessageW(&message, nullptr, 0, 0, 0x80));
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_FLAGS);
  EXPECT_EQ(Next(), WM_APP);
}

}  // namespace
