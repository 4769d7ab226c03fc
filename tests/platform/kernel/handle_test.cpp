#include <windows.h>

#include <gtest/gtest.h>

#include "platform/testing/simulated_machine.h"

namespace {

TEST(CloseHandle, AHandleIsClosedOnce) {
  const HANDLE mutex = ::CreateMutexW(nullptr, FALSE, nullptr);
  EXPECT_TRUE(::CloseHandle(mutex));
  ::SetLastError(NO_ERROR);
  EXPECT_FALSE(::CloseHandle(mutex));
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_HANDLE);
}

TEST(CloseHandle, AStaleHandleDoesNotCloseTheObjectThatTookItsPlace) {
  const HANDLE first = ::CreateMutexW(nullptr, FALSE, nullptr);
  ASSERT_TRUE(::CloseHandle(first));
  const HANDLE second = ::CreateMutexW(nullptr, FALSE, nullptr);
  EXPECT_FALSE(::CloseHandle(first));
  EXPECT_EQ(::WaitForSingleObject(second, 0), WAIT_OBJECT_0);
  EXPECT_TRUE(::CloseHandle(second));
}

TEST(CloseHandle, WhatIsNoHandleIsRefused) {
  int local = 0;
  for (const HANDLE wrong : {HANDLE{nullptr}, INVALID_HANDLE_VALUE, HANDLE{&local},
                             reinterpret_cast<HANDLE>(std::uintptr_t{1})}) {
    ::SetLastError(NO_ERROR);
    EXPECT_FALSE(::CloseHandle(wrong));
    EXPECT_EQ(::GetLastError(), ERROR_INVALID_HANDLE);
    EXPECT_EQ(::WaitForSingleObject(wrong, 0), WAIT_FAILED);
  }
}

TEST(CloseHandle, KindsWithAClosingCallOfTheirOwnAreRefusedAndStayOpen) {
  const platform::SimulatedMachine machine;
  HKEY key = nullptr;
  ASSERT_EQ(::RegOpenKeyExW(HKEY_LOCAL_MACHINE, nullptr, 0, KEY_READ, &key), 0);
  EXPECT_FALSE(::CloseHandle(key));
  EXPECT_FALSE(::CloseHandle(::GetModuleHandleW(nullptr)));
  EXPECT_EQ(::RegCloseKey(key), 0);
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
