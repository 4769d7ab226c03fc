#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <thread>

#include "platform/user/recording_window.h"
#include "platform/user/window_thread.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ThreadMessageTest : public ::testing::Test {
 protected:
  Recording recording_;
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
  const HWND mine = Recording::Create();
  std::atomic<bool> answered = false;
  ::PostMessageW(mine, WM_APP, 0, 0);
  std::thread sender([&] {
    ::SendMessageW(mine, WM_APP + 1, 0, 0);
    answered = true;
  });
  recording_.Clear();
  MSG message{};
  while (!answered)
    EXPECT_FALSE(::PeekMessageW(&message, mine, WM_USER, WM_USER, PM_REMOVE));
  sender.join();
  EXPECT_THAT(recording_.Entries(), ElementsAre(std::to_string(WM_APP + 1)));
  EXPECT_TRUE(::PeekMessageW(&message, mine, 0, 0, PM_REMOVE));
  EXPECT_EQ(message.message, WM_APP);
  ::DestroyWindow(mine);
}

TEST_F(ThreadMessageTest, ASenderServesMessagesToItselfWhileItWaits) {
  const HWND mine = Recording::Create();
  recording_.On(WM_APP, [&](HWND, UINT, WPARAM, LPARAM) -> LRESULT {
    return ::SendMessageW(mine, WM_APP + 1, 0, 0) + 1;
  });
  recording_.On(WM_APP + 1, [](HWND, UINT, WPARAM, LPARAM) -> LRESULT { return 10; });
  const WindowThread owner;
  EXPECT_EQ(::SendMessageW(owner.Window(), WM_APP, 0, 0), 11);
  ::DestroyWindow(mine);
}

TEST_F(ThreadMessageTest, AWaitingSenderLeavesPostedMessagesAlone) {
  const HWND mine = Recording::Create();
  recording_.On(WM_APP, [&](HWND, UINT, WPARAM, LPARAM) -> LRESULT {
    ::PostMessageW(mine, WM_APP + 1, 0, 0);
    return 0;
  });
  const WindowThread owner;
  recording_.Clear();
  ::SendMessageW(owner.Window(), WM_APP, 0, 0);
  EXPECT_THAT(recording_.Entries(), ElementsAre(std::to_string(WM_APP)));
  MSG message{};
  EXPECT_TRUE(::PeekMessageW(&message, mine, 0, 0, PM_REMOVE));
  EXPECT_EQ(message.message, WM_APP + 1);
  ::DestroyWindow(mine);
}

TEST_F(ThreadMessageTest, PostedMessagesArriveInOrder) {
  WindowThread owner;
  recording_.Clear();
  for (UINT number = 0; number < 100; ++number)
    ASSERT_TRUE(::PostMessageW(owner.Window(), WM_APP + number, 0, 0));
  EXPECT_EQ(owner.Stop(9), 9u);
  const std::vector<std::string> entries = recording_.Entries();
  ASSERT_EQ(entries.size(), 100u);
  for (UINT number = 0; number < 100; ++number)
    EXPECT_EQ(entries[number], std::to_string(WM_APP + number));
}

TEST_F(ThreadMessageTest, NoWakeIsLost) {
  const WindowThread owner;
  const HWND mine = Recording::Create();
  recording_.On(WM_APP, [&](HWND, UINT, WPARAM wParam, LPARAM) -> LRESULT {
    ::PostMessageW(mine, WM_APP + 1, wParam, 0);
    return 0;
  });
  for (WPARAM turn = 0; turn < 2'000; ++turn) {
    ::PostMessageW(owner.Window(), WM_APP, turn, 0);
    MSG message{};
    ASSERT_TRUE(::GetMessageW(&message, nullptr, 0, 0));
    ASSERT_EQ(message.wParam, turn);
  }
  ::DestroyWindow(mine);
}

TEST_F(ThreadMessageTest, AThreadHasAQueueOnceItHasLookedForMessages) {
  std::promise<DWORD> id;
  std::promise<void> refused;
  std::promise<void> looked;
  WPARAM received = 0;
  std::thread late([&] {
    id.set_value(::GetCurrentThreadId());
    refused.get_future().wait();
    MSG message{};
    ::PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
    looked.set_value();
    EXPECT_EQ(::GetMessageW(&message, nullptr, 0, 0), 0);
    received = message.wParam;
  });
  const DWORD thread = id.get_future().get();
  EXPECT_FALSE(::PostThreadMessageW(thread, WM_QUIT, 3, 0));
  EXPECT_EQ(::GetLastError(), DWORD{ERROR_INVALID_THREAD_ID});
  refused.set_value();
  looked.get_future().wait();
  EXPECT_TRUE(::PostThreadMessageW(thread, WM_QUIT, 4, 0));
  late.join();
  EXPECT_EQ(received, 4u);
}

TEST_F(ThreadMessageTest, AThreadThatIsNotThereIsTold) {
  DWORD ended = 0;
  std::thread([&] { ended = ::GetCurrentThreadId(); }).join();
  // The system may take a moment more to forget a thread that has been joined.
  while (::PostThreadMessageW(ended, WM_APP, 0, 0))
    std::this_thread::yield();
  for (const DWORD id : {DWORD{0}, ended, DWORD{0xFFFFFFF0}}) {
    EXPECT_FALSE(::PostThreadMessageW(id, WM_APP, 0, 0)) << id;
    EXPECT_EQ(::GetLastError(), ERROR_INVALID_THREAD_ID) << id;
  }
}

TEST_F(ThreadMessageTest, AForeignThreadMayNeitherDestroyNorReadNorTimeAWindow) {
  const WindowThread owner;
  MSG message{};
  EXPECT_FALSE(::DestroyWindow(owner.Window()));
  EXPECT_EQ(::GetLastError(), ERROR_ACCESS_DENIED);
  EXPECT_EQ(::SetTimer(owner.Window(), 1, 10, nullptr), 0u);
  EXPECT_EQ(::GetLastError(), ERROR_WINDOW_OF_OTHER_THREAD);
  EXPECT_EQ(::GetMessageW(&message, owner.Window(), 0, 0), -1);
  EXPECT_EQ(::GetLastError(), ERROR_WINDOW_OF_OTHER_THREAD);
  EXPECT_TRUE(::IsWindow(owner.Window()));
  EXPECT_EQ(::GetWindowThreadProcessId(owner.Window(), nullptr), owner.Id());
}

TEST_F(ThreadMessageTest, WindowsEndWithTheirThreadSilently) {
  WindowThread owner;
  recording_.Clear();
  owner.Stop(0);
  EXPECT_FALSE(::IsWindow(owner.Window()));
  EXPECT_FALSE(::PostMessageW(owner.Window(), WM_APP, 0, 0));
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_WINDOW_HANDLE);
  EXPECT_THAT(recording_.Entries(), IsEmpty());
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
  LRESULT result = -1;
  DWORD error = NO_ERROR;
  std::thread sender([&] {
    sending.set_value();
    result = ::SendMessageW(window, WM_APP, 0, 0);
    error = ::GetLastError();
  });
  sending.get_future().wait();
  end.set_value();
  owner.join();
  sender.join();
  EXPECT_EQ(result, 0);
  EXPECT_EQ(error, ERROR_INVALID_WINDOW_HANDLE);
}

}  // namespace
