// What a thread posts to itself, and what threads send and post to one another.
#include <windows.h>

#include <gmock/gmock.h>

#include <atomic>
#include <future>
#include <thread>

#include "platform/kit/failing_call.h"
#include "platform/kit/recording_window.h"
#include "platform/kit/window_thread.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

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
  const HWND mine_ = Recording::Create();
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
  const HWND second = Recording::Create();
  ::PostMessageW(nullptr, WM_APP, 0, 0);
  ::PostMessageW(mine_, WM_APP + 1, 0, 0);
  ::PostMessageW(second, WM_APP + 2, 0, 0);
  const auto threadOnly = reinterpret_cast<HWND>(static_cast<LONG_PTR>(-1));
  const struct {
    HWND window;
    UINT first, last, remove, expected;
  } cases[] = {
      {second, 0, 0, PM_NOREMOVE, WM_APP + 2},
      {second, 0, 0, PM_REMOVE, WM_APP + 2},
      {nullptr, WM_APP + 1, WM_APP + 1, PM_REMOVE, WM_APP + 1},
      {mine_, 0, 0, PM_REMOVE, WM_NULL},
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
  ::PostMessageW(mine_, WM_APP, 0, 0);
  ::PostMessageW(nullptr, WM_APP + 1, 0, 0);
  ::DestroyWindow(mine_);
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

using ThreadMessageTest = MessageQueueTest;

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

TEST_F(ThreadMessageTest, TheOwnerAnswersASenderThatServesWhatIsSentAndLeavesWhatIsPosted) {
  std::atomic<DWORD> ran = 0;
  recording_.On(WM_APP, [&](HWND, UINT, WPARAM wParam, LPARAM lParam) -> LRESULT {
    ran = ::GetCurrentThreadId();
    ::PostMessageW(mine_, WM_APP + 2, 0, 0);
    return ::SendMessageW(mine_, WM_APP + 1, 0, 0) + static_cast<LRESULT>(wParam) * lParam;
  });
  recording_.On(WM_APP + 1, 10);
  const WindowThread owner;
  recording_.Take();
  EXPECT_EQ(::SendMessageW(owner.Window(), WM_APP, 6, 7), 52);
  EXPECT_EQ(ran, owner.Id());
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
  constexpr DWORD kNoThread = ERROR_INVALID_THREAD_ID;
  EXPECT_EQ(ErrorOf(::PostThreadMessageW(thread, WM_APP, 3, 0)), kNoThread);
  refused.set_value();
  looked.get_future().wait();
  EXPECT_TRUE(::PostThreadMessageW(thread, WM_APP, 4, 0));
  late.join();
  EXPECT_EQ(received.wParam, 4u);
  // The system may take a moment more to forget a thread that has been joined.
  while (::PostThreadMessageW(thread, WM_APP, 0, 0))
    std::this_thread::yield();
  EXPECT_EQ(::GetLastError(), kNoThread);
}

TEST_F(ThreadMessageTest, WindowsEndWithTheirThreadSilently) {
  WindowThread owner;
  recording_.Take();
  owner.Stop(0);
  EXPECT_FALSE(::IsWindow(owner.Window()));
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
    EXPECT_EQ(ErrorOf(::SendMessageW(window, WM_APP, 0, 0)), DWORD{ERROR_INVALID_WINDOW_HANDLE});
  });
  sending.get_future().wait();
  end.set_value();
  owner.join();
  sender.join();
}

}  // namespace
