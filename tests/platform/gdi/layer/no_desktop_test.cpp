// A machine whose environment names no desktop.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstdlib>

#include "platform/kit/failing_call.h"
#include "platform/testing/simulated_machine.h"

namespace {

// What all other tests of this program see, unless QT_QPA_PLATFORM names another.
class Offscreen : public ::testing::Environment {
 public:
  void SetUp() override { ::setenv("QT_QPA_PLATFORM", "offscreen", 0); }
};
[[maybe_unused]] const auto* const offscreen = ::testing::AddGlobalTestEnvironment(new Offscreen);

class NoDesktop : public ::testing::Test {
 protected:
  // Its end takes the thread's desktop with it.
  NoDesktop() { const platform::SimulatedMachine machineWithoutDesktop; }
  // For the tests that come after.
  ~NoDesktop() override { ::setenv("QT_QPA_PLATFORM", "offscreen", 1); }
};

TEST_F(NoDesktop, DeviceContextsFailForLackOfAWindowStation) {
  ExpectFailures({
      {"GetDC", [] { return ::GetDC(nullptr) != nullptr; },
       ERROR_REQUIRES_INTERACTIVE_WINDOWSTATION},
      {"CreateCompatibleDC", [] { return ::CreateCompatibleDC(nullptr) != nullptr; },
       ERROR_REQUIRES_INTERACTIVE_WINDOWSTATION},
  });
}

TEST_F(NoDesktop, ColoursAndFontsAreTheDocumentedDefaults) {
  EXPECT_EQ(::GetSysColor(COLOR_WINDOW), RGB(255, 255, 255));
  EXPECT_EQ(::GetSysColor(COLOR_MENUTEXT), RGB(0, 0, 0));
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  ASSERT_TRUE(::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, 0, &metrics, 0));
  EXPECT_STREQ(metrics.lfMenuFont.lfFaceName, L"Tahoma");
}

}  // namespace
