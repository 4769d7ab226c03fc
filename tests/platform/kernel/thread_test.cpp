#include <windows.h>

#include <gtest/gtest.h>

#include <process.h>

#include <atomic>
#include <thread>

#include "platform/testing/simulated_machine.h"

namespace {

HANDLE Begin(_beginthreadex_proc_type entry, void* argument, unsigned flags = 0,
             unsigned* id = nullptr) {
  return reinterpret_cast<HANDLE>(::_beginthreadex(nullptr, 0, entry, argument, flags, id));
}

struct Seen {
  std::atomic<bool> ran = false;
  std::atomic<DWORD> id = 0;
};

unsigned Note(void* argument) {
  auto* seen = static_cast<Seen*>(argument);
  seen->id = ::GetCurrentThreadId();
  seen->ran = true;
  return 0;
}

TEST(Thread, ASuspendedOneRunsOnlyAfterItIsResumed) {
  Seen seen;
  unsigned id = 0;
  const HANDLE thread = Begin(Note, &seen, CREATE_SUSPENDED, &id);
  ASSERT_NE(thread, nullptr);
  EXPECT_EQ(::WaitForSingleObject(thread, 50), WAIT_TIMEOUT);
  EXPECT_FALSE(seen.ran);
  EXPECT_EQ(::ResumeThread(thread), 1u);
  EXPECT_EQ(::WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0);
  EXPECT_TRUE(seen.ran);
  EXPECT_EQ(seen.id, id);
  EXPECT_NE(id, ::GetCurrentThreadId());
  EXPECT_EQ(::ResumeThread(thread), 0u);
  EXPECT_TRUE(::CloseHandle(thread));
  EXPECT_EQ(::ResumeThread(thread), static_cast<DWORD>(-1));
}

TEST(Process, EndsAtOnceWithItsStatus) {
  EXPECT_EXIT(::ExitProcess(3), testing::ExitedWithCode(3), "");
}

TEST(Thread, AnEndedOneStaysSignalled) {
  Seen seen;
  const HANDLE thread = Begin(Note, &seen);
  EXPECT_EQ(::WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0);
  EXPECT_EQ(::WaitForSingleObject(thread, 0), WAIT_OBJECT_0);
  EXPECT_TRUE(::CloseHandle(thread));
}

TEST(Thread, UnsupportedFlagsStartNothing) {
  Seen seen;
  EXPECT_EQ(Begin(Note, &seen, 0x40), nullptr);
  EXPECT_EQ(Begin(nullptr, &seen), nullptr);
  EXPECT_FALSE(seen.ran);
}

struct LateWriter {
  std::atomic<bool>* done = nullptr;
  ~LateWriter() {
    if (done == nullptr) return;
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    *done = true;
  }
};

unsigned LeaveThreadLocal(void* argument) {
  static thread_local LateWriter writer;
  writer.done = static_cast<std::atomic<bool>*>(argument);
  return 0;
}

TEST(Thread, IsNotSignalledBeforeItsThreadLocalObjectsAreGone) {
  std::atomic<bool> done = false;
  const HANDLE thread = Begin(LeaveThreadLocal, &done);
  EXPECT_EQ(::WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0);
  EXPECT_TRUE(done);
  EXPECT_TRUE(::CloseHandle(thread));
}

TEST(WaitForSingleObject, TimeOutsRunOnTheMachinesClock) {
  platform::SimulatedMachine machine;
  Seen seen;
  const HANDLE thread = Begin(Note, &seen, CREATE_SUSPENDED);
  std::atomic<DWORD> result = 1;
  std::atomic<bool> waiting = false;
  std::jthread waiter([&] {
    waiting = true;
    result = ::WaitForSingleObject(thread, 3'600'000);
  });
  while (!waiting)
    std::this_thread::yield();
  // The waiter may have read the clock already or not; an hour after that, its time is over.
  while (result == 1) {
    machine.Time().Advance(std::chrono::hours(1));
    std::this_thread::yield();
  }
  waiter.join();
  EXPECT_EQ(result, WAIT_TIMEOUT);
  ::ResumeThread(thread);
  EXPECT_EQ(::WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0);
  EXPECT_TRUE(::CloseHandle(thread));
}

TEST(CriticalSection, IsRecursiveAndKeepsOthersOut) {
  CRITICAL_SECTION section;
  ::InitializeCriticalSection(&section);
  constexpr int kRounds = 20'000;
  int count = 0;
  const auto work = [&] {
    for (int i = 0; i < kRounds; ++i) {
      ::EnterCriticalSection(&section);
      ::EnterCriticalSection(&section);
      ++count;
      ::LeaveCriticalSection(&section);
      ::LeaveCriticalSection(&section);
    }
  };
  {
    const std::jthread first(work);
    const std::jthread second(work);
  }
  EXPECT_EQ(count, 2 * kRounds);
  ::DeleteCriticalSection(&section);
}

}  // namespace
