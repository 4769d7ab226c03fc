#include <windows.h>

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "platform/kit/failing_call.h"

namespace {

// What another thread gets that waits for the mutex without patience.
DWORD WaitElsewhere(HANDLE mutex) {
  DWORD result = WAIT_FAILED;
  std::thread([&] {
    result = ::WaitForSingleObject(mutex, 0);
    if (result == WAIT_OBJECT_0) ::ReleaseMutex(mutex);
  }).join();
  return result;
}

TEST(Mutex, IsFreeAfterAsManyReleasesOfItsOwnerAsWaits) {
  const HANDLE mutex = ::CreateMutexW(nullptr, TRUE, nullptr);
  const FailingCall release{"release", [=] { return ::ReleaseMutex(mutex); }, ERROR_NOT_OWNER};
  EXPECT_EQ(::WaitForSingleObject(mutex, 0), WAIT_OBJECT_0);
  EXPECT_TRUE(::ReleaseMutex(mutex));
  std::thread([&] { ExpectFailures({release}); }).join();
  EXPECT_EQ(WaitElsewhere(mutex), WAIT_TIMEOUT);
  EXPECT_TRUE(::ReleaseMutex(mutex));
  EXPECT_EQ(WaitElsewhere(mutex), WAIT_OBJECT_0);
  ExpectFailures({release});
  EXPECT_TRUE(::CloseHandle(mutex));
}

TEST(Mutex, AWaiterGetsItWhenItIsReleased) {
  const HANDLE mutex = ::CreateMutexW(nullptr, TRUE, nullptr);
  std::jthread waiter([&] {
    EXPECT_EQ(::WaitForSingleObject(mutex, INFINITE), WAIT_OBJECT_0);
    EXPECT_TRUE(::ReleaseMutex(mutex));
  });
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  EXPECT_TRUE(::ReleaseMutex(mutex));
  waiter.join();
  EXPECT_TRUE(::CloseHandle(mutex));
}

TEST(Mutex, TheNextOwnerIsToldOnceThatTheThreadThatHadItEnded) {
  const HANDLE mutex = ::CreateMutexW(nullptr, FALSE, nullptr);
  std::thread([&] { EXPECT_EQ(::WaitForSingleObject(mutex, 0), WAIT_OBJECT_0); }).join();
  EXPECT_EQ(::WaitForSingleObject(mutex, 0), WAIT_ABANDONED);
  EXPECT_TRUE(::ReleaseMutex(mutex));
  EXPECT_EQ(::WaitForSingleObject(mutex, 0), WAIT_OBJECT_0);
  EXPECT_TRUE(::CloseHandle(mutex));
}

}  // namespace
