// For tests that need a process of their own, within EXPECT_EXIT.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>

// Ends the process well unless an expectation of the test has failed; those are told on standard
// error, which EXPECT_EXIT shows.
[[noreturn]] inline void ExitWithResult() {
  const auto& result = *::testing::UnitTest::GetInstance()->current_test_info()->result();
  for (int part = 0; part < result.total_part_count(); ++part) {
    const ::testing::TestPartResult& each = result.GetTestPartResult(part);
    std::cerr << each.file_name() << ":" << each.line_number() << ": " << each.message() << "\n";
  }
  std::exit(result.Failed() ? EXIT_FAILURE : EXIT_SUCCESS);
}
