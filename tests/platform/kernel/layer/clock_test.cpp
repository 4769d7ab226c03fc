// Time as the simulated machine tells it.
#include <windows.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <thread>
#include <tuple>

#include "platform/testing/simulated_machine.h"

namespace {

TEST(Clock, LocalTimeAndTicksAreTheMachines) {
  platform::SimulatedMachine machine;
  machine.Time().SetLocalTime(2024, 2, 29, 23, 59, 58);
  machine.Time().SetTickMilliseconds(0x1'0000'0005);
  EXPECT_EQ(::GetTickCount(), 5u);
  ::Sleep(1'250);
  EXPECT_EQ(::GetTickCount(), 1'255u);
  SYSTEMTIME time{};
  ::GetLocalTime(&time);
  EXPECT_EQ(std::tuple(time.wYear, time.wMonth, time.wDay, time.wDayOfWeek),
            std::tuple(2024, 2, 29, 4));
  EXPECT_EQ(std::tuple(time.wHour, time.wMinute, time.wSecond, time.wMilliseconds),
            std::tuple(23, 59, 59, 250));
  ::setenv("TZ", "EAST-5", 1);  // the machine has moved
  ::GetLocalTime(&time);
  ::setenv("TZ", "UTC", 1);
  EXPECT_EQ(time.wHour, 4);
}

TEST(Clock, TimeOutsRunOnTheMachines) {
  platform::SimulatedMachine machine;
  const HANDLE mutex = ::CreateMutexW(nullptr, TRUE, nullptr);
  std::atomic<DWORD> result = 1;
  std::jthread waiter([&] { result = ::WaitForSingleObject(mutex, 3'600'000); });
  // Whenever the waiter has read the clock, its time is over an hour after that.
  while (result == 1) {
    machine.Time().Advance(std::chrono::hours(1));
    std::this_thread::yield();
  }
  EXPECT_EQ(result, WAIT_TIMEOUT);
  EXPECT_TRUE(::CloseHandle(mutex));
}

}  // namespace
