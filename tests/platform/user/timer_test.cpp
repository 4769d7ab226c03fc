#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <thread>

#include "platform/testing/simulated_machine.h"
#include "platform/user/recording_window.h"

namespace {

using std::chrono::milliseconds;
using ::testing::ElementsAre;

class TimerTest : public ::testing::Test {
 protected:
  void SetUp() override { window_ = Recording::Create(); }
  void TearDown() override { ::DestroyWindow(window_); }

  void Advance(int duration) { machine_.Time().Advance(milliseconds(duration)); }
  // Handles what is there; the number of messages.
  static int Pump() {
    MSG message;
    int count = 0;
    for (; ::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE); ++count)
      ::DispatchMessageW(&message);
    return count;
  }

  platform::SimulatedMachine machine_;
  Recording recording_;
  HWND window_ = nullptr;
};

TEST_F(TimerTest, ATimerComesWhenItIsDueAndAgainAPeriodLater) {
  EXPECT_EQ(::SetTimer(window_, 7, 100, nullptr), 7u);
  recording_.Clear();
  Advance(99);
  EXPECT_EQ(Pump(), 0);
  Advance(1);
  EXPECT_EQ(Pump(), 1);
  EXPECT_EQ(Pump(), 0);
  Advance(100);
  EXPECT_EQ(Pump(), 1);
  EXPECT_THAT(recording_.Entries(), ElementsAre("TIMER 7", "TIMER 7"));
}

TEST_F(TimerTest, MissedPeriodsMakeOneMessageAndKeepTheBeat) {
  ::SetTimer(window_, 1, 100, nullptr);
  Advance(1'050);
  EXPECT_EQ(Pump(), 1);
  Advance(49);
  EXPECT_EQ(Pump(), 0);
  Advance(1);
  EXPECT_EQ(Pump(), 1);
}

TEST_F(TimerTest, APeriodTooShortIsTheShortest) {
  ::SetTimer(window_, 1, 0, nullptr);
  Advance(9);
  EXPECT_EQ(Pump(), 0);
  Advance(1);
  EXPECT_EQ(Pump(), 1);
}

TEST_F(TimerTest, TheLongestDueComesFirst) {
  ::SetTimer(window_, 1, 200, nullptr);
  ::SetTimer(window_, 2, 100, nullptr);
  recording_.Clear();
  Advance(250);
  EXPECT_EQ(Pump(), 2);
  EXPECT_THAT(recording_.Entries(), ElementsAre("TIMER 2", "TIMER 1"));
}

TEST_F(TimerTest, SettingATimerAgainStartsItAnew) {
  ::SetTimer(window_, 1, 100, nullptr);
  Advance(90);
  ::SetTimer(window_, 1, 50, nullptr);
  Advance(49);
  EXPECT_EQ(Pump(), 0);
  Advance(1);
  EXPECT_EQ(Pump(), 1);
}

TEST_F(TimerTest, AKilledTimerIsSilentEvenWhenItWasDue) {
  ::SetTimer(window_, 1, 100, nullptr);
  Advance(100);
  EXPECT_TRUE(::KillTimer(window_, 1));
  EXPECT_EQ(Pump(), 0);
  EXPECT_FALSE(::KillTimer(window_, 1));
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_PARAMETER);
}

TEST_F(TimerTest, TimersEndWithTheirWindow) {
  const HWND other = Recording::Create();
  ::SetTimer(other, 1, 100, nullptr);
  ::DestroyWindow(other);
  Advance(100);
  EXPECT_EQ(Pump(), 0);
}

TEST_F(TimerTest, TimersOfTheThreadGetNumbersOfTheirOwn) {
  const UINT_PTR first = ::SetTimer(nullptr, 99, 100, nullptr);
  const UINT_PTR second = ::SetTimer(nullptr, 99, 100, nullptr);
  EXPECT_NE(first, second);
  EXPECT_EQ(::SetTimer(nullptr, first, 200, nullptr), first);
  Advance(100);
  EXPECT_EQ(Pump(), 1);
  EXPECT_TRUE(::KillTimer(nullptr, first));
  EXPECT_TRUE(::KillTimer(nullptr, second));
}

struct CallbackCall {
  HWND window;
  UINT message;
  UINT_PTR id;
  DWORD tick;
};
std::vector<CallbackCall> callbackCalls;

void CALLBACK RecordCall(HWND window, UINT message, UINT_PTR id, DWORD tick) {
  callbackCalls.push_back({window, message, id, tick});
}

TEST_F(TimerTest, ACallbackIsCalledInsteadOfTheProcedure) {
  callbackCalls.clear();
  ::SetTimer(window_, 5, 100, RecordCall);
  recording_.Clear();
  Advance(100);
  EXPECT_EQ(Pump(), 1);
  EXPECT_TRUE(recording_.Entries().empty());
  ASSERT_EQ(callbackCalls.size(), 1u);
  EXPECT_EQ(callbackCalls[0].window, window_);
  EXPECT_EQ(callbackCalls[0].message, WM_TIMER);
  EXPECT_EQ(callbackCalls[0].id, 5u);
  EXPECT_EQ(callbackCalls[0].tick, ::GetTickCount());
}

TEST_F(TimerTest, ATimerThatAFilterHoldsBackComesLater) {
  ::SetTimer(window_, 1, 100, nullptr);
  Advance(100);
  MSG message{};
  EXPECT_FALSE(::PeekMessageW(&message, nullptr, WM_APP, WM_APP, PM_REMOVE));
  EXPECT_EQ(Pump(), 1);
}

TEST_F(TimerTest, AWaitingThreadSeesTheClockMove) {
  std::promise<void> set;
  std::atomic<bool> came = false;
  std::thread waiting([&] {
    ::SetTimer(nullptr, 0, 1'000, nullptr);
    set.set_value();
    MSG message{};
    came = ::GetMessageW(&message, nullptr, 0, 0) > 0 && message.message == WM_TIMER;
  });
  set.get_future().wait();
  EXPECT_FALSE(came);
  Advance(1'000);
  waiting.join();
  EXPECT_TRUE(came);
}

}  // namespace
