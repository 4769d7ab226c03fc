// Calls that must fail, each with the last error that it is documented to leave.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>

constexpr DWORD kUntouched = 0x20000001;  // an application's own number, never set by the system

// The last error of a call that failed; 0 of one that succeeded. The next one has to set its own.
inline DWORD ErrorOf(bool succeeded) {
  const DWORD error = succeeded ? NO_ERROR : ::GetLastError();
  ::SetLastError(kUntouched);
  return error;
}

struct FailingCall {
  const char* call;  // as it is read when it fails to fail
  std::function<bool()> succeeds;
  DWORD error;
};

inline void ExpectFailures(std::initializer_list<FailingCall> calls) {
  for (const FailingCall& each : calls) {
    ::SetLastError(kUntouched);
    EXPECT_FALSE(each.succeeds()) << each.call;
    EXPECT_EQ(::GetLastError(), each.error) << each.call;
  }
}
