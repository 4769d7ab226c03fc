// What a window keeps on screens with more than 96 pixels to the inch, each in a process of its
// own, since the scale is that of the whole desktop.
#include <windows.h>

#include <unistd.h>

#include <QImage>
#include <cstdio>
#include <cstdlib>

#include "platform/desktop/window_fixture.h"

namespace {

class ScaledSurface : public WindowOnDesktop {
 protected:
  // Ends the process with an error as soon as something is not as it should be.
  static void Require(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "not so: %s\n", what);
    ::_exit(EXIT_FAILURE);
  }

  void DrawLine() {
    const HWND window = Create(L"", {10, 10, 110, 60}, WS_VISIBLE, nullptr, 0,
                               static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
    Pump([&] { return CountOf(WM_PAINT) > 0; });
    const HDC context = ::GetDC(window);
    const RECT line = {20, 10, 21, 40};
    ::FillRect(context, &line, static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH)));
    Require(::GetPixel(context, 20, 20) == 0, "a pixel read from the line");
    Require(::GetPixel(context, 21, 20) == RGB(255, 255, 255), "a pixel beside it");
    ::ReleaseDC(window, context);
    RequireSharpLine(WidgetOf(window)->grab().toImage());
  }

  // Every pixel is black or white, and as many are black as the line has.
  static void RequireSharpLine(const QImage& seen) {
    const int ratio = static_cast<int>(seen.devicePixelRatio());
    Require(seen.width() == 100 * ratio, "as fine as the screen");
    int black = 0;
    for (int y = 0; y < seen.height(); ++y) {
      for (int x = 0; x < seen.width(); ++x) {
        const QColor colour = seen.pixelColor(x, y);
        Require(colour == Qt::black || colour == Qt::white, "no blurred pixel");
        black += colour == Qt::black ? 1 : 0;
      }
    }
    Require(black == 30 * ratio * ratio, "the size of the line");
    Require(seen.pixelColor(20 * ratio, 10 * ratio) == Qt::black, "its upper end");
    Require(seen.pixelColor(21 * ratio - 1, 40 * ratio - 1) == Qt::black, "its lower end");
  }

  [[noreturn]] void RunScaled(const char* factor) {
    ::alarm(60);
    ::setenv("QT_SCALE_FACTOR", factor, 1);
    OnWindowThread([this] { DrawLine(); });
    std::exit(EXIT_SUCCESS);
  }
};

TEST_F(ScaledSurface, ALineIsSharp) {
  ::testing::GTEST_FLAG(death_test_style) = "threadsafe";
  EXPECT_EXIT(RunScaled("1"), ::testing::ExitedWithCode(EXIT_SUCCESS), "");
  EXPECT_EXIT(RunScaled("2"), ::testing::ExitedWithCode(EXIT_SUCCESS), "");
}

}  // namespace
