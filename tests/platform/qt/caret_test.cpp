#include "platform/qt/window_fixture.h"

namespace {

class CaretOnDesktop : public WindowOnDesktop {
 protected:
  // In a white window that has a caret of 3 by 12.
  void WithCaret(const std::function<void()>& body) {
    const auto create = [&] {
      Pump([&] { return CountOf(WM_PAINT) > 0; });
      ::CreateCaret(window_, nullptr, 3, 12);
      body();
    };
    WithWindow(create, {.brush = static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH))});
  }
  bool IsLit(int x, int y) const { return Seen(window_, x, y) == RGB(0, 0, 0); }
};

TEST_F(CaretOnDesktop, ItIsSeenAsLongAsItIsShownAsOftenAsHidden) {
  WithCaret([this] {
    ::SetCaretPos(20, 30);
    EXPECT_FALSE(IsLit(20, 30)) << "a new one is hidden";
    ::ShowCaret(window_);
    EXPECT_TRUE(IsLit(20, 30));
    EXPECT_TRUE(IsLit(22, 41));
    EXPECT_FALSE(IsLit(23, 30));
    EXPECT_FALSE(IsLit(20, 42));
    ::HideCaret(window_);
    ::HideCaret(window_);
    EXPECT_FALSE(IsLit(20, 30));
    ::ShowCaret(window_);
    EXPECT_FALSE(IsLit(20, 30)) << "hidden twice, shown once";
    ::ShowCaret(window_);
    EXPECT_TRUE(IsLit(20, 30));
    ::ShowCaret(window_);
    ::HideCaret(window_);
    EXPECT_FALSE(IsLit(20, 30)) << "showing it twice counts once";
  });
}

TEST_F(CaretOnDesktop, ItMovesWithoutATraceAndBlinks) {
  WithCaret([this] {
    ::ShowCaret(window_);
    ::SetCaretPos(50, 30);
    EXPECT_FALSE(IsLit(1, 1));
    EXPECT_TRUE(IsLit(51, 31));
    const HDC context = ::GetDC(window_);
    EXPECT_EQ(::GetPixel(context, 51, 31), RGB(255, 255, 255)) << "it lies over the surface";
    ::ReleaseDC(window_, context);
    Pump([&] { return !IsLit(51, 31); });
    Pump([&] { return IsLit(51, 31); });
    ::UpdateWindow(window_);
    EXPECT_TRUE(IsLit(51, 31)) << "painting does not take it away";
    ::DestroyCaret();
    EXPECT_FALSE(IsLit(51, 31));
  });
}

}  // namespace
