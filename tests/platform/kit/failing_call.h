// A table of calls that must fail, each with the last error that it is documented to leave.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>

struct FailingCall {
  const char* call;  // as it is read when it fails to fail
  std::function<bool()> succeeds;
  DWORD error;
};

inline void ExpectFailures(std::initializer_list<FailingCall> calls) {
  constexpr DWORD kUntouched =
      0x20000001;  // an application's own number, which the system never sets
  for (const FailingCall& each : calls) {
    ::SetLastError(kUntouched);
    EXPECT_FALSE(each.succeeds()) << each.call;
    EXPECT_EQ(::GetLastError(), each.error) << each.call;
  }
}
