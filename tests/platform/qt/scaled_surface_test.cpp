// What a window keeps on screens with more than 96 pixels to the inch, each in a process of its
// own, since the scale is that of the whole desktop.
#include <unistd.h>

#include <QImage>

#include "platform/kit/exit_with_result.h"
#include "platform/qt/window_fixture.h"

namespace {

class ScaledSurface : public WindowOnDesktop {
 protected:
  [[noreturn]] void RunScaled(const char* factor) {
    ::alarm(60);
    ::setenv("QT_SCALE_FACTOR", factor, 1);
    const auto drawLine = [this] {
      Pump([&] { return CountOf(WM_PAINT) > 0; });
      const HDC context = ::GetDC(window_);
      const RECT line = {20, 10, 21, 40};
      ::FillRect(context, &line, static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH)));
      EXPECT_EQ(::GetPixel(context, 20, 20), RGB(0, 0, 0));
      EXPECT_EQ(::GetPixel(context, 21, 20), RGB(255, 255, 255));
      ::ReleaseDC(window_, context);
      ExpectSharpLine(WidgetOf(window_)->grab().toImage());
    };
    WithWindow(drawLine, {.brush = static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH))});
    ExitWithResult();
  }

  // Every pixel is black or white, and as many are black as the line has.
  static void ExpectSharpLine(const QImage& seen) {
    const int ratio = static_cast<int>(seen.devicePixelRatio());
    EXPECT_EQ(seen.width(), 200 * ratio) << "not as fine as the screen";
    int black = 0;
    int white = 0;
    for (int y = 0; y < seen.height(); ++y) {
      for (int x = 0; x < seen.width(); ++x) {
        black += seen.pixelColor(x, y) == Qt::black ? 1 : 0;
        white += seen.pixelColor(x, y) == Qt::white ? 1 : 0;
      }
    }
    EXPECT_EQ(black, 30 * ratio * ratio);
    EXPECT_EQ(black + white, seen.width() * seen.height()) << "blurred";
    EXPECT_EQ(seen.pixelColor(20 * ratio, 10 * ratio), Qt::black) << "its upper end";
    EXPECT_EQ(seen.pixelColor(21 * ratio - 1, 40 * ratio - 1), Qt::black) << "its lower end";
  }
};

TEST_F(ScaledSurface, ALineIsSharp) {
  ::testing::GTEST_FLAG(death_test_style) = "threadsafe";
  for (const char* factor : {"1", "2"})
    EXPECT_EXIT(RunScaled(factor), ::testing::ExitedWithCode(EXIT_SUCCESS), "") << factor;
}

}  // namespace
