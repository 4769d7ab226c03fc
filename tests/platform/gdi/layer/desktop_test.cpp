// What drawing takes from the desktop, and has without one.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "platform/gdi/drawing_surface.h"
#include "platform/kit/failing_call.h"
#include "platform/testing/simulated_machine.h"

namespace {

// What all other tests of this program see, unless QT_QPA_PLATFORM names another.
[[maybe_unused]] const int offscreen = ::setenv("QT_QPA_PLATFORM", "offscreen", 0);

// A machine whose environment names no desktop.
class NoDesktop : public ::testing::Test {
 protected:
  // Its end takes the thread's desktop with it.
  NoDesktop() { const platform::SimulatedMachine machineWithoutDesktop; }
  // For the tests that come after.
  ~NoDesktop() override { ::setenv("QT_QPA_PLATFORM", "offscreen", 1); }
};

TEST_F(NoDesktop, DeviceContextsFailForLackOfAWindowStation) {
  constexpr DWORD kNoStation = ERROR_REQUIRES_INTERACTIVE_WINDOWSTATION;
  ExpectFailures({
      {"GetDC", [] { return ::GetDC(nullptr); }, kNoStation},
      {"CreateCompatibleDC", [] { return ::CreateCompatibleDC(nullptr); }, kNoStation},
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

TEST_F(Fonts, FontsHaveTheHeightAskedFor) {
  const auto height = [this](std::wstring_view face, LONG wanted) {
    const Selected font(page_, NewFont(face, wanted));
    return ExtentOf(page_, L"Ag").cy;
  };
  // The height of the line.
  EXPECT_NEAR(height(L"", 40), 40, 1);
  // The desktop's font at its own size, whichever of the two is asked for; else in proportion.
  EXPECT_EQ(height(L"MS Shell Dlg", -11), height(L"MS Shell Dlg 2", -12));
  EXPECT_EQ(height(L"", -11), height(L"MS Shell Dlg", -11));
  EXPECT_NEAR(height(L"MS Shell Dlg", -48), 4 * height(L"MS Shell Dlg", -12), 4);
  // An unknown face is shown in the desktop's, at the size asked for.
  EXPECT_NEAR(height(L"No Such Face", -80), 2 * height(L"No Such Face", -40), 2);
}

TEST_F(Fonts, TheReportedMessageFontIsTheOneShown) {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  ASSERT_TRUE(::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, 0, &metrics, 0));
  const Selected message(page_, ::CreateFontIndirectW(&metrics.lfMessageFont));
  const LONG width = ExtentOf(page_, L"Some text").cx;
  const Selected shell(page_, NewFont(L"MS Shell Dlg", -11));
  EXPECT_EQ(ExtentOf(page_, L"Some text").cx, width);
}

// Screens with more than 96 pixels to the inch, each in a process of its own, since the scale is
// that of the whole desktop. What the other tests say of an ordinary screen must hold there too.
// Two pixels square are too few to stay as they are.
constexpr const char* kExceptions = "-ScaledScreen*:NoDesktop*:Image.*Pixels*";

TEST(ScaledScreen, DrawingIsThatOfAnOrdinaryScreen) {
  const std::string program = std::filesystem::read_symlink("/proc/self/exe");
  for (const std::string factor : {"1", "1.5", "2"}) {
    const std::string command = "env -u GTEST_OUTPUT QT_SCALE_FACTOR=" + factor + " timeout 60 '" +
                                program + "' --gtest_brief=1 '--gtest_filter=" + kExceptions + "'";
    EXPECT_EQ(std::system(command.c_str()), EXIT_SUCCESS) << factor;
  }
}

}  // namespace
