// Timers on the simulated machine's clock.
#include <windows.h>

#include <gmock/gmock.h>

#include <future>

#include "platform/kit/recording_window.h"
#include "platform/testing/simulated_machine.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class TimerTest : public ::testing::Test {
 protected:
  void Advance(int duration) { machine_.Time().Advance(std::chrono::milliseconds(duration)); }
  // What the windows are told when that much time has passed.
  std::vector<std::string> After(int duration) {
    recording_.Take();
    Advance(duration);
    Pump();
    return recording_.Take();
  }
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
  const HWND window_ = Recording::Create();
};

TEST_F(TimerTest, ATimerComesWhenItIsDueAndAgainAPeriodLater) {
  EXPECT_EQ(::SetTimer(window_, 7, 100, nullptr), 7u);
  EXPECT_THAT(After(99), IsEmpty());
  EXPECT_THAT(After(1), ElementsAre("TIMER 7"));
  EXPECT_THAT(After(0), IsEmpty());
  Advance(100);
  MSG message{};
  EXPECT_FALSE(::PeekMessageW(&message, nullptr, WM_APP, WM_APP, PM_REMOVE));
  EXPECT_THAT(After(0), ElementsAre("TIMER 7")) << "a filter only holds it back";
  EXPECT_THAT(After(1'050), ElementsAre("TIMER 7")) << "missed periods make one message";
  EXPECT_THAT(After(49), IsEmpty());
  EXPECT_THAT(After(1), ElementsAre("TIMER 7")) << "the beat is kept";
}

TEST_F(TimerTest, TheLongestDueComesFirst) {
  ::SetTimer(window_, 1, 200, nullptr);
  ::SetTimer(window_, 2, 100, nullptr);
  EXPECT_THAT(After(250), ElementsAre("TIMER 2", "TIMER 1"));
}

TEST_F(TimerTest, SettingATimerAgainStartsItAnewAndTenMillisecondsAreTheShortest) {
  ::SetTimer(window_, 1, 100, nullptr);
  Advance(90);
  ::SetTimer(window_, 1, 50, nullptr);
  EXPECT_THAT(After(49), IsEmpty());
  EXPECT_THAT(After(1), ElementsAre("TIMER 1"));
  ::SetTimer(window_, 1, 0, nullptr);
  EXPECT_THAT(After(9), IsEmpty());
  EXPECT_THAT(After(1), ElementsAre("TIMER 1"));
}

TEST_F(TimerTest, AKilledTimerAndThoseOfADestroyedWindowAreSilentEvenWhenDue) {
  const HWND other = Recording::Create();
  ::SetTimer(window_, 1, 100, nullptr);
  ::SetTimer(other, 1, 100, nullptr);
  Advance(100);
  EXPECT_TRUE(::KillTimer(window_, 1));
  ::DestroyWindow(other);
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

TEST_F(TimerTest, ACallbackIsCalledInsteadOfTheProcedure) {
  using Call = std::tuple<HWND, UINT, UINT_PTR, DWORD>;
  static std::vector<Call> calls;
  ::SetTimer(window_, 5, 100, [](HWND window, UINT message, UINT_PTR id, DWORD tick) {
    calls.emplace_back(window, message, id, tick);
  });
  EXPECT_THAT(After(100), IsEmpty());
  EXPECT_THAT(calls, ElementsAre(Call{window_, WM_TIMER, 5, ::GetTickCount()}));
}

TEST_F(TimerTest, AWaitingThreadSeesTheClockMove) {
  std::promise<void> set;
  auto came = std::async(std::launch::async, [&] {
    ::SetTimer(nullptr, 0, 1'000, nullptr);
    set.set_value();
    MSG message{};
    return ::GetMessageW(&message, nullptr, 0, 0) > 0 ? message.message : WM_NULL;
  });
  set.get_future().wait();
  Advance(1'000);
  EXPECT_EQ(came.get(), UINT{WM_TIMER});
}

}  // namespace
