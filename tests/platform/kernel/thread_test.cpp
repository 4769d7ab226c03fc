#include <windows.h>

#include <gtest/gtest.h>

#include <process.h>

#include <atomic>
#include <chrono>
#include <thread>

namespace {

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

struct LateWriter {
  std::atomic<bool>* done = nullptr;
  ~LateWriter() {
    if (done == nullptr) return;
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    *done = true;
  }
};

unsigned WINAPI LeaveThreadLocal(void* argument) {
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

}  // namespace
