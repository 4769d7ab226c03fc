#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <thread>

#include "platform/kit/recording_window.h"
#include "platform/kit/window_thread.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ThreadMessageTest : public ::testing::Test {
 protected:
  static UINT Next() {
    MSG message{};
    return ::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) ? message.message : WM_NULL;
  }

  Recording recording_;
  const HWND mine_ = Recording::Create();
};

TEST_F(ThreadMessageTest, ASentMessageRunsOnTheOwnerAndAnswersTheSender) {
  std::atomic<DWORD> ran = 0;
  recording_.On(WM_APP, [&](HWND, UINT, WPARAM wParam, LPARAM lParam) -> LRESULT {
    ran = ::GetCurrentThreadId();
    return static_cast<LRESULT>(wParam) * lParam;
  });
  const WindowThread owner;
  EXPECT_EQ(::SendMessageW(owner.Window(), WM_APP, 6, 7), 42);
  EXPECT_EQ(ran, owner.Id());
}

TEST_F(ThreadMessageTest, ASentMessageOvertakesPostedOnesWhateverTheFilter) {
  std::atomic<bool> answered = false;
  ::PostMessageW(mine_, WM_APP, 0, 0);
  recording_.Take();
  std::thread sender([&] {
    ::SendMessageW(mine_, WM_APP + 1, 0, 0);
    answered = true;
  });
  MSG message{};
  while (!answered)
    EXPECT_FALSE(::PeekMessageW(&message, mine_, WM_USER, WM_USER, PM_REMOVE));
  sender.join();
  EXPECT_THAT(recording_.Take(), ElementsAre(std::to_string(WM_APP + 1)));
  EXPECT_EQ(Next(), WM_APP);
}

TEST_F(ThreadMessageTest, AWaitingSenderServesWhatIsSentAndLeavesWhatIsPosted) {
  recording_.On(WM_APP, [&](HWND, UINT, WPARAM, LPARAM) -> LRESULT {
    ::PostMessageW(mine_, WM_APP + 2, 0, 0);
    return ::SendMessageW(mine_, WM_APP + 1, 0, 0) + 1;
  });
  recording_.On(WM_APP + 1, 10);
  const WindowThread owner;
  recording_.Take();
  EXPECT_EQ(::SendMessageW(owner.Window(), WM_APP, 0, 0), 11);
  EXPECT_THAT(recording_.Take(), ElementsAre(std::to_string(WM_APP), std::to_string(WM_APP + 1)));
  EXPECT_EQ(Next(), WM_APP + 2);
}

TEST_F(ThreadMessageTest, NoWakeIsLost) {
  recording_.On(WM_APP, [&](HWND, UINT, WPARAM wParam, LPARAM lParam) -> LRESULT {
    return ::PostMessageW(mine_, WM_APP + 1, wParam, lParam);
  });
  const WindowThread owner;
  for (int turn = 0; turn < 2'000; ++turn) {
    ::PostMessageW(owner.Window(), WM_APP, static_cast<WPARAM>(turn), -turn);
    MSG message{};
    ASSERT_TRUE(::GetMessageW(&message, nullptr, 0, 0));
    ASSERT_EQ(message.wParam, static_cast<WPARAM>(turn));
    ASSERT_EQ(message.lParam, -turn);
  }
}

TEST_F(ThreadMessageTest, AThreadHasAQueueFromItsFirstLookForMessagesToItsEnd) {
  std::promise<void> refused;
  std::promise<void> looked;
  std::promise<DWORD> id;
  MSG received{};
  std::thread late([&] {
    id.set_value(::GetCurrentThreadId());
    refused.get_future().wait();
    ::PeekMessageW(&received, nullptr, 0, 0, PM_NOREMOVE);
    looked.set_value();
    ::GetMessageW(&received, nullptr, 0, 0);
  });
  const DWORD thread = id.get_future().get();
  EXPECT_FALSE(::PostThreadMessageW(thread, WM_APP, 3, 0));
  EXPECT_EQ(::GetLastError(), DWORD{ERROR_INVALID_THREAD_ID});
  refused.set_value();
  looked.get_future().wait();
  EXPECT_TRUE(::PostThreadMessageW(thread, WM_APP, 4, 0));
  late.join();
  EXPECT_EQ(received.wParam, 4u);
  // The system may take a moment more to forget a thread that has been joined.
  while (::PostThreadMessageW(thread, WM_APP, 0, 0))
    std::this_thread::yield();
  EXPECT_EQ(::GetLastError(), DWORD{ERROR_INVALID_THREAD_ID});
}

TEST_F(ThreadMessageTest, WindowsEndWithTheirThreadSilently) {
  WindowThread owner;
  recording_.Take();
  owner.Stop(0);
  EXPECT_FALSE(::IsWindow(owner.Window()));
  EXPECT_FALSE(::PostMessageW(owner.Window(), WM_APP, 0, 0));
  EXPECT_EQ(::GetLastError(), DWORD{ERROR_INVALID_WINDOW_HANDLE});
  EXPECT_THAT(recording_.Take(), IsEmpty());
}

TEST_F(ThreadMessageTest, ASenderIsReleasedWhenTheOwnerEnds) {
  std::promise<HWND> created;
  std::promise<void> end;
  std::thread owner([&] {
    created.set_value(Recording::Create());
    end.get_future().wait();
  });
  const HWND window = created.get_future().get();
  std::promise<void> sending;
  std::thread sender([&] {
    sending.set_value();
    EXPECT_EQ(::SendMessageW(window, WM_APP, 0, 0), 0);
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_INVALID_WINDOW_HANDLE});
  });
  sending.get_future().wait();
  end.set_value();
  owner.join();
  sender.join();
}

}  // namespace
