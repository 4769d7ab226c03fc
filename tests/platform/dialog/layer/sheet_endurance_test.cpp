// A sheet that is opened every now and then for months must leave nothing behind.
#include <windows.h>

#include <gtest/gtest.h>

#include "desktop/resident_memory.h"
#include "platform/dialog/recorded_sheet.h"
#include "platform/dialog/scripted_dialog.h"
#include "platform/kernel/handle_table.h"

namespace {

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
constexpr DWORD kLongest = 50'000;      // milliseconds
constexpr long kMostGrowth = 4L << 20;  // bytes

TEST(SheetEndurance, ThousandsOfOpeningsLeaveNoMemoryOrHandlesBehind) {
  RecordedSheet sheet;
  sheet.AddPage("a", PSP_PREMATURE);
  sheet.AddPage("b", PSP_PREMATURE);
  int opened = 0;
  const auto openAndClose = [&] {
    EXPECT_EQ(sheet.Run({Press(PSBTN_CANCEL)}), 0);
    DispatchAll();  // what a service's loop does between two openings
    ++opened;
  };
  while (opened < kWarmUp)
    openAndClose();
  const std::size_t handles = platform::Handles().Count();
  const long memory = ResidentBytes();
  const DWORD start = ::GetTickCount();
  while (opened < kOpenings && ::GetTickCount() - start < kLongest)
    openAndClose();
  EXPECT_EQ(platform::Handles().Count(), handles);
  EXPECT_GE(opened, kFewest);
  if (kJudgesMemory) {
    EXPECT_LT(ResidentBytes() - memory, kMostGrowth) << opened << " openings";
  }
}

}  // namespace
