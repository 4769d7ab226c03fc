// What drawing takes from the desktop, and has without one.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstdlib>

#include "platform/gdi/drawing_surface.h"
#include "platform/kit/failing_call.h"
#include "platform/testing/simulated_machine.h"

namespace {

// What all other tests of this program see, unless QT_QPA_PLATFORM names another.
class Offscreen : public ::testing::Environment {
 public:
  void SetUp() override { ::setenv("QT_QPA_PLATFORM", "offscreen", 0); }
};
[[maybe_unused]] const auto* const offscreen = ::testing::AddGlobalTestEnvironment(new Offscreen);

// A machine whose environment names no desktop.
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

using Fonts = DrawingTest;

LONG HeightOf(std::wstring_view face, LONG wanted) {
  const DrawingSurface surface(1, 1);
  const Selected font(surface.Get(), NewFont(face, wanted));
  return ExtentOf(surface.Get(), L"Ag").cy;
}

TEST_F(Fonts, FontsHaveTheHeightAskedFor) {
  // The height of the line.
  EXPECT_NEAR(HeightOf(L"", 40), 40, 1);
  // The desktop's font at its own size, whichever of the two is asked for; else in proportion.
  EXPECT_EQ(HeightOf(L"MS Shell Dlg", -11), HeightOf(L"MS Shell Dlg 2", -12));
  EXPECT_EQ(HeightOf(L"", -11), HeightOf(L"MS Shell Dlg", -11));
  EXPECT_NEAR(HeightOf(L"MS Shell Dlg", -48), 4 * HeightOf(L"MS Shell Dlg", -12), 4);
  // An unknown face is shown in the desktop's, at the size asked for.
  EXPECT_NEAR(HeightOf(L"No Such Face", -80), 2 * HeightOf(L"No Such Face", -40), 2);
}

TEST_F(Fonts, TheReportedMessageFontIsTheOneShown) {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  ASSERT_TRUE(::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, 0, &metrics, 0));
  const DrawingSurface surface(1, 1);
  const Selected message(surface.Get(), ::CreateFontIndirectW(&metrics.lfMessageFont));
  const LONG width = ExtentOf(surface.Get(), L"Some text").cx;
  const Selected shell(surface.Get(), NewFont(L"MS Shell Dlg", -11));
  EXPECT_EQ(ExtentOf(surface.Get(), L"Some text").cx, width);
}

}  // namespace
