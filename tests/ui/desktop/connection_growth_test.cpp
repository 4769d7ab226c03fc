// Opens the connection sheet thousands of times: neither handles, files nor memory may grow.
#include <windows.h>

#include <prsht.h>

#include <chrono>
#include <filesystem>

#include "connection_test.h"
#include "desktop/resident_memory.h"
#include "platform/kernel/handle_table.h"

namespace quillgate {
namespace {

// Sanitizers keep freed memory for a while, and find leaks by themselves.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kJudgesMemory = false;
constexpr int kRounds = 1000;
#else
constexpr bool kJudgesMemory = true;
constexpr int kRounds = 10000;
#endif
constexpr int kRoundsBefore = 100;
// As many rounds as fit, on a slow machine fewer.
constexpr std::chrono::seconds kLimit{40};
constexpr int kFewestRounds = 300;
constexpr long kMostGrowth = 4L << 20;  // bytes; what a round leaves would be a multiple
constexpr UINT kTimerMilliseconds = 10;

std::size_t OpenFiles() {
  return static_cast<std::size_t>(
      std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}));
}

// Presses Close as soon as the sheet is there.
void CALLBACK CloseSheet(HWND, UINT, UINT_PTR timer, DWORD) noexcept {
  const HWND sheet = ::GetActiveWindow();
  if (sheet == nullptr) return;
  ::KillTimer(nullptr, timer);
  PropSheet_PressButton(sheet, PSBTN_CANCEL);
}

class ConnectionGrowthTest : public ConnectionTest {
 protected:
  void OpenAndClose() {
    ::SetTimer(nullptr, 0, kTimerMilliseconds, CloseSheet);
    machine_.Time().Advance(std::chrono::milliseconds(kTimerMilliseconds));
    sheet_.Open(*session_);
    // What a service's loop does between two openings.
    MSG message{};
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
      ::DispatchMessageW(&message);
  }
};

TEST_F(ConnectionGrowthTest, TenThousandOpeningsLeaveNothingBehind) {
  logon_.LogOn({});
  for (int round = 0; round < kRoundsBefore; ++round)
    OpenAndClose();
  const std::size_t handles = platform::Handles().Count();
  const std::size_t files = OpenFiles();
  const long memory = ResidentBytes();
  const auto start = std::chrono::steady_clock::now();
  int round = 0;
  while (round < kRounds && std::chrono::steady_clock::now() - start < kLimit) {
    OpenAndClose();
    ++round;
  }
  RecordProperty("rounds", round);
  EXPECT_GE(round, kFewestRounds);
  EXPECT_EQ(platform::Handles().Count(), handles);
  EXPECT_EQ(OpenFiles(), files);
  if (!kJudgesMemory) return;
  EXPECT_LT(ResidentBytes(), memory + kMostGrowth) << "in " << round << " rounds";
}

}  // namespace
}  // namespace quillgate
