// A sheet that is opened every now and then for months must leave nothing behind.
#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

#include "desktop/resident_memory.h"
#include "platform/dialog/recorded_sheet.h"
#include "platform/kernel/handle_table.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kWarmUp = 100;
// Sanitizers keep freed memory for a while, and find leaks by themselves.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kJudgesMemory = false;
constexpr int kOpenings = 2'000;
#else
constexpr bool kJudgesMemory = true;
constexpr int kOpenings = 10'000;
#endif
// On a machine that is too busy for all of them.
constexpr int kFewest = 1'000;
constexpr auto kLongest = std::chrono::seconds(50);
constexpr long kMostGrowth = 4L << 20;  // bytes

// What a service's loop does between two openings.
void LetEventsHappen() {
  MSG message;
  while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
    ::DispatchMessageW(&message);
}

void OpenAndClose(RecordedSheet& sheet) {
  EXPECT_EQ(sheet.Run(), 0);
  LetEventsHappen();
}

TEST(SheetEndurance, ThousandsOfOpeningsLeaveNothingBehind) {
  RecordedSheet sheet;
  sheet.AddPage("a", PSP_PREMATURE);
  sheet.AddPage("b", PSP_PREMATURE);
  sheet.CloseWhenShown(IDCANCEL);
  for (int i = 0; i < kWarmUp; ++i)
    OpenAndClose(sheet);
  const std::size_t handles = platform::Handles().Count();
  const long memory = ResidentBytes();
  const auto start = Clock::now();
  int opened = 0;
  while (opened < kOpenings && Clock::now() - start < kLongest) {
    OpenAndClose(sheet);
    ++opened;
  }
  const auto taken = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - start);
  const long growth = ResidentBytes() - memory;
  RecordProperty("openings", opened);
  RecordProperty("microseconds_each", static_cast<int>(taken.count() / opened));
  std::printf("%d openings, %lld us each, %ld KiB more\n", opened,
              static_cast<long long>(taken.count() / opened), growth / 1024);
  EXPECT_EQ(platform::Handles().Count(), handles);
  EXPECT_GE(opened, kFewest);
  if (kJudgesMemory) {
    EXPECT_LT(growth, kMostGrowth);
  }
}

}  // namespace
