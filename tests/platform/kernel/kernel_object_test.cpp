// Handles, mutexes and threads.
#include <windows.h>

#include <gtest/gtest.h>

#include <process.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <thread>

#include "platform/kit/failing_call.h"

namespace {

TEST(CloseHandle, AStaleHandleDoesNotCloseTheObjectThatTookItsPlace) {
  const HANDLE first = ::CreateMutexW(nullptr, FALSE, nullptr);
  EXPECT_TRUE(::CloseHandle(first));
  const HANDLE second = ::CreateMutexW(nullptr, FALSE, nullptr);
  EXPECT_EQ(ErrorOf(::CloseHandle(first)), ERROR_INVALID_HANDLE);
  EXPECT_EQ(::WaitForSingleObject(second, 0), WAIT_OBJECT_0);
  EXPECT_TRUE(::CloseHandle(second));
}

TEST(Handle, AnInvalidOneFailsEveryCallWithInvalidHandle) {
  int local = 0;
  for (void* wrong : std::initializer_list<void*>{nullptr, &local, ::GetModuleHandleW(nullptr)}) {
    EXPECT_EQ(ErrorOf(::CloseHandle(wrong)), ERROR_INVALID_HANDLE);
    EXPECT_EQ(ErrorOf(::WaitForSingleObject(wrong, 0) != WAIT_FAILED), ERROR_INVALID_HANDLE);
    EXPECT_EQ(ErrorOf(::ReleaseMutex(wrong)), ERROR_INVALID_HANDLE);
    EXPECT_EQ(ErrorOf(::ResumeThread(wrong) != static_cast<DWORD>(-1)), ERROR_INVALID_HANDLE);
  }
}

TEST(Mutex, AWaiterGetsItAfterAsManyReleasesOfItsOwnerAsWaits) {
  const HANDLE mutex = ::CreateMutexW(nullptr, TRUE, nullptr);
  EXPECT_EQ(::WaitForSingleObject(mutex, 0), WAIT_OBJECT_0);
  EXPECT_TRUE(::ReleaseMutex(mutex));
  std::thread([&] {
    EXPECT_EQ(ErrorOf(::ReleaseMutex(mutex)), ERROR_NOT_OWNER);
    EXPECT_EQ(::WaitForSingleObject(mutex, 0), WAIT_TIMEOUT);
  }).join();

  std::jthread waiter([&] {
    EXPECT_EQ(::WaitForSingleObject(mutex, INFINITE), WAIT_OBJECT_0);
    EXPECT_TRUE(::ReleaseMutex(mutex));
  });
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  EXPECT_TRUE(::ReleaseMutex(mutex));
  waiter.join();
  EXPECT_EQ(ErrorOf(::ReleaseMutex(mutex)), ERROR_NOT_OWNER);
  EXPECT_TRUE(::CloseHandle(mutex));
}

TEST(Mutex, TheNextOwnerIsNotifiedOnceThatTheThreadThatHadItEnded) {
  const HANDLE mutex = ::CreateMutexW(nullptr, FALSE, nullptr);
  std::thread([&] { EXPECT_EQ(::WaitForSingleObject(mutex, 0), WAIT_OBJECT_0); }).join();
  EXPECT_EQ(::WaitForSingleObject(mutex, 0), WAIT_ABANDONED);
  EXPECT_TRUE(::ReleaseMutex(mutex));
  EXPECT_EQ(::WaitForSingleObject(mutex, 0), WAIT_OBJECT_0);
  EXPECT_TRUE(::CloseHandle(mutex));
}

HANDLE Begin(_beginthreadex_proc_type entry, void* argument, unsigned flags = 0,
             unsigned* id = nullptr) {
  return reinterpret_cast<HANDLE>(::_beginthreadex(nullptr, 0, entry, argument, flags, id));
}

unsigned WINAPI NoteId(void* id) {
  *static_cast<std::atomic<DWORD>*>(id) = ::GetCurrentThreadId();
  return 0;
}

TEST(Thread, ASuspendedOneRunsOnlyAfterItIsResumedAndStaysSignalled) {
  std::atomic<DWORD> seen = 0;
  unsigned id = 0;
  const HANDLE thread = Begin(NoteId, &seen, CREATE_SUSPENDED, &id);
  ASSERT_NE(thread, nullptr);
  EXPECT_EQ(::WaitForSingleObject(thread, 50), WAIT_TIMEOUT);
  EXPECT_EQ(seen, 0u);
  EXPECT_EQ(::ResumeThread(thread), 1u);
  EXPECT_EQ(::WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0);
  EXPECT_EQ(seen, id);
  EXPECT_NE(id, ::GetCurrentThreadId());
  EXPECT_EQ(::ResumeThread(thread), 0u);
  EXPECT_EQ(::WaitForSingleObject(thread, 0), WAIT_OBJECT_0);
  EXPECT_TRUE(::CloseHandle(thread));
}

TEST(Thread, InvalidArgumentsStartNone) {
  std::atomic<DWORD> seen = 0;
  EXPECT_EQ(Begin(NoteId, &seen, 0x40), nullptr);
  EXPECT_EQ(Begin(nullptr, &seen), nullptr);
  EXPECT_EQ(seen, 0u);
}

unsigned WINAPI LeaveThreadLocal(void* done) {
  static thread_local const std::shared_ptr<void> lateWriter(done, [](void* flag) {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    *static_cast<std::atomic<bool>*>(flag) = true;
  });
  return 0;
}

TEST(Thread, IsNotSignalledBeforeItsThreadLocalObjectsAreGone) {
  std::atomic<bool> done = false;
  const HANDLE thread = Begin(LeaveThreadLocal, &done);
  EXPECT_EQ(::WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0);
  EXPECT_TRUE(done);
  EXPECT_TRUE(::CloseHandle(thread));
}

TEST(Process, EndsAtOnceWithItsStatus) {
  EXPECT_EXIT(::ExitProcess(3), testing::ExitedWithCode(3), "");
}

TEST(CriticalSection, IsRecursiveAndKeepsOthersOut) {
  CRITICAL_SECTION section;
  ::InitializeCriticalSection(&section);
  std::atomic<bool> entered = false;
  ::EnterCriticalSection(&section);
  ::EnterCriticalSection(&section);
  std::jthread other([&] {
    ::EnterCriticalSection(&section);
    entered = true;
    ::LeaveCriticalSection(&section);
  });
  ::LeaveCriticalSection(&section);
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  EXPECT_FALSE(entered) << "left once, entered twice";
  ::LeaveCriticalSection(&section);
  other.join();
  ::DeleteCriticalSection(&section);
}

TEST(GlobalMemory, StaysLockedAsOftenAsItWasAndEndsOnce) {
  const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, 8);
  EXPECT_EQ(::GlobalLock(memory), ::GlobalLock(memory));
  EXPECT_TRUE(::GlobalUnlock(memory));
  EXPECT_EQ(ErrorOf(::GlobalUnlock(memory)), NO_ERROR);
  EXPECT_EQ(ErrorOf(::GlobalUnlock(memory)), ERROR_NOT_LOCKED);
  EXPECT_EQ(::GlobalFree(memory), nullptr);
  EXPECT_EQ(ErrorOf(::GlobalFree(memory) == nullptr), ERROR_INVALID_HANDLE);
  EXPECT_EQ(ErrorOf(::GlobalLock(memory) != nullptr), ERROR_INVALID_HANDLE);
  EXPECT_EQ(ErrorOf(::GlobalAlloc(0, 8) != nullptr), ERROR_INVALID_PARAMETER) << "unmovable";
}

TEST(HeapAlloc, AForeignHeapGivesNoMemoryAndFreesNone) {
  EXPECT_EQ(::HeapAlloc(nullptr, 0, 8), nullptr);
  void* memory = ::HeapAlloc(::GetProcessHeap(), HEAP_ZERO_MEMORY, 8);
  ASSERT_NE(memory, nullptr);
  EXPECT_EQ(*static_cast<std::uint64_t*>(memory), 0u);
  EXPECT_FALSE(::HeapFree(nullptr, 0, memory));
  EXPECT_TRUE(::HeapFree(::GetProcessHeap(), 0, memory));
}

}  // namespace
