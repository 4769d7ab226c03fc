#include <windows.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>

#include "platform/kit/failing_call.h"

namespace {

TEST(CloseHandle, AStaleHandleDoesNotCloseTheObjectThatTookItsPlace) {
  const HANDLE first = ::CreateMutexW(nullptr, FALSE, nullptr);
  EXPECT_TRUE(::CloseHandle(first));
  const HANDLE second = ::CreateMutexW(nullptr, FALSE, nullptr);
  ExpectFailures({{"twice", [&] { return ::CloseHandle(first); }, ERROR_INVALID_HANDLE}});
  EXPECT_EQ(::WaitForSingleObject(second, 0), WAIT_OBJECT_0);
  EXPECT_TRUE(::CloseHandle(second));
}

TEST(Handle, AnInvalidOneFailsEveryCallWithInvalidHandle) {
  int local = 0;
  for (void* wrong : std::initializer_list<void*>{nullptr, &local, ::GetModuleHandleW(nullptr)}) {
    ExpectFailures({
        {"close", [&] { return ::CloseHandle(wrong); }, ERROR_INVALID_HANDLE},
        {"wait", [&] { return ::WaitForSingleObject(wrong, 0) != WAIT_FAILED; },
         ERROR_INVALID_HANDLE},
        {"release", [&] { return ::ReleaseMutex(wrong); }, ERROR_INVALID_HANDLE},
        {"resume", [&] { return ::ResumeThread(wrong) + 1 != 0; }, ERROR_INVALID_HANDLE},
    });
  }
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
