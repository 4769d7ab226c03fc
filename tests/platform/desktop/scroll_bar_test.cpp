#include <windows.h>

#include <gmock/gmock.h>

#include <QScrollBar>
#include <QStyleOptionSlider>
#include <QTest>
#include <QWheelEvent>

#include "platform/desktop/window_fixture.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

constexpr RECT kPlace = {60, 70, 260, 270};

// To tell where its parts are.
class BarParts final : public QScrollBar {
 public:
  static QPoint Middle(QScrollBar* bar, QStyle::SubControl part) {
    QStyleOptionSlider option;
    (bar->*&BarParts::initStyleOption)(&option);
    return bar->style()->subControlRect(QStyle::CC_ScrollBar, &option, part, bar).center();
  }
};

void SendMouse(QWidget* widget, QEvent::Type type, QPoint place) {
  const auto button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
  const auto held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
  QMouseEvent event(type, place, widget->mapToGlobal(QPointF(place)), button, held, Qt::NoModifier);
  QCoreApplication::sendEvent(widget, &event);
}

class ScrollBarOnDesktop : public WindowOnDesktop {
 protected:
  void SetUp() override {
    WindowOnDesktop::SetUp();
    for (const UINT message : {WM_VSCROLL, WM_HSCROLL}) {
      On(message, [this, message](HWND window, WPARAM wParam, LPARAM) -> LRESULT {
        told_.emplace_back(LOWORD(wParam), HIWORD(wParam));
        if (follows_ && LOWORD(wParam) == SB_LINEDOWN) {
          const int bar = message == WM_VSCROLL ? SB_VERT : SB_HORZ;
          ::SetScrollPos(window, bar, ::GetScrollPos(window, bar) + 1, TRUE);
        }
        return 0;
      });
    }
  }
  // From 1 to 10, at 4.
  static HWND CreateWithBars(DWORD style) {
    const HWND window = Create(L"", kPlace, style | WS_VISIBLE);
    for (const int bar : {SB_HORZ, SB_VERT}) {
      if ((style & (bar == SB_VERT ? WS_VSCROLL : WS_HSCROLL)) == 0) continue;
      ::SetScrollRange(window, bar, 1, 10, TRUE);
      ::SetScrollPos(window, bar, 4, TRUE);
    }
    PumpAll();
    return window;
  }
  static QScrollBar* BarOf(HWND window, Qt::Orientation orientation) {
    for (auto* each : WidgetOf(window)->findChildren<QScrollBar*>()) {
      if (each->orientation() == orientation && each->isVisible()) return each;
    }
    return nullptr;
  }

  std::vector<std::pair<int, int>> told_;
  bool follows_ = false;
};

TEST_F(ScrollBarOnDesktop, TheBarsLieBesideTheClientAreaAndAboveChildren) {
  OnWindowThread([] {
    const HWND window = CreateWithBars(WS_HSCROLL | WS_VSCROLL);
    EXPECT_EQ(BarOf(window, Qt::Vertical)->geometry(), QRect(183, 0, 17, 183));
    EXPECT_EQ(BarOf(window, Qt::Horizontal)->geometry(), QRect(0, 183, 183, 17));
    const HWND child = Create(L"", {0, 0, 200, 200}, WS_CHILD | WS_VISIBLE, window);
    QWidget* widget = WidgetOf(window);
    EXPECT_EQ(widget->childAt(190, 50), BarOf(window, Qt::Vertical));
    EXPECT_EQ(widget->childAt(50, 50), WidgetOf(child));
    EXPECT_NE(widget->childAt(190, 190), WidgetOf(child)) << "the corner";
    ::MoveWindow(window, 60, 70, 100, 120, TRUE);
    EXPECT_EQ(BarOf(window, Qt::Vertical)->geometry(), QRect(83, 0, 17, 103));
    ::ShowScrollBar(window, SB_HORZ, FALSE);
    EXPECT_EQ(BarOf(window, Qt::Horizontal), nullptr);
    EXPECT_EQ(BarOf(window, Qt::Vertical)->geometry(), QRect(83, 0, 17, 120));
  });
}

TEST_F(ScrollBarOnDesktop, AClickIsToldAndTheProcedureMovesTheBar) {
  const struct {
    QStyle::SubControl part;
    int request;
  } cases[] = {{QStyle::SC_ScrollBarAddLine, SB_LINEDOWN},
               {QStyle::SC_ScrollBarSubLine, SB_LINEUP},
               {QStyle::SC_ScrollBarAddPage, SB_PAGEDOWN},
               {QStyle::SC_ScrollBarSubPage, SB_PAGEUP}};
  for (const auto orientation : {Qt::Vertical, Qt::Horizontal}) {
    OnWindowThread([&] {
      const HWND window = CreateWithBars(orientation == Qt::Vertical ? WS_VSCROLL : WS_HSCROLL);
      QScrollBar* bar = BarOf(window, orientation);
      for (const auto& each : cases) {
        told_.clear();
        QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, BarParts::Middle(bar, each.part));
        EXPECT_THAT(told_, IsEmpty()) << "told inside the desktop's event";
        PumpAll();
        EXPECT_THAT(told_, ElementsAre(Pair(each.request, 0), Pair(SB_ENDSCROLL, 0)));
        EXPECT_EQ(bar->value(), 4) << "it moves by itself";
        EXPECT_EQ(bar->sliderPosition(), 4);
      }
      follows_ = true;
      QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier,
                        BarParts::Middle(bar, QStyle::SC_ScrollBarAddLine));
      PumpAll();
      EXPECT_EQ(bar->value(), 5);
      follows_ = false;
      EXPECT_EQ(CountOf(WM_LBUTTONDOWN), 0) << "the window is told of a click on its bar";
    });
  }
}

TEST_F(ScrollBarOnDesktop, TheThumbFollowsTheMouseAndGoesWhereTheProcedurePutsIt) {
  OnWindowThread([this] {
    const HWND window = CreateWithBars(WS_VSCROLL);
    QScrollBar* bar = BarOf(window, Qt::Vertical);
    const QPoint thumb = BarParts::Middle(bar, QStyle::SC_ScrollBarSlider);
    SendMouse(bar, QEvent::MouseButtonPress, thumb);
    SendMouse(bar, QEvent::MouseMove, thumb + QPoint(0, 40));
    PumpAll();
    ASSERT_FALSE(told_.empty());
    const int place = told_.back().second;
    EXPECT_EQ(told_.back().first, SB_THUMBTRACK);
    EXPECT_GT(place, 4);
    EXPECT_EQ(bar->sliderPosition(), place);
    SCROLLINFO info{sizeof info, SIF_ALL, 0, 0, 0, 0, 0};
    EXPECT_TRUE(::GetScrollInfo(window, SB_VERT, &info));
    EXPECT_EQ(info.nTrackPos, place);
    EXPECT_EQ(info.nPos, 4);
    ::SetScrollPos(window, SB_VERT, 2, TRUE);
    EXPECT_EQ(bar->sliderPosition(), place) << "it is torn from under the mouse";
    told_.clear();
    SendMouse(bar, QEvent::MouseButtonRelease, thumb + QPoint(0, 40));
    PumpAll();
    EXPECT_THAT(told_, ElementsAre(Pair(SB_THUMBPOSITION, place), Pair(SB_ENDSCROLL, 0)));
    EXPECT_EQ(bar->sliderPosition(), 2);
    EXPECT_EQ(bar->value(), 2);
  });
}

TEST_F(ScrollBarOnDesktop, ABarTakesNeitherTheKeyboardNorTheWheel) {
  OnWindowThread([this] {
    const HWND window = CreateWithBars(WS_VSCROLL);
    QScrollBar* bar = BarOf(window, Qt::Vertical);
    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier,
                      BarParts::Middle(bar, QStyle::SC_ScrollBarAddLine));
    EXPECT_FALSE(bar->hasFocus());
    PumpAll();
    told_.clear();
    const QPointF place(5, 50);
    QWheelEvent wheel(place, bar->mapToGlobal(place), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(bar, &wheel);
    PumpAll();
    EXPECT_THAT(told_, IsEmpty());
    EXPECT_EQ(bar->value(), 4);
  });
}

TEST_F(ScrollBarOnDesktop, WhatABarUncoversIsPainted) {
  OnWindowThread([this] {
    const HWND window = CreateWithBars(WS_VSCROLL);
    std::vector<LONG> painted;
    On(WM_PAINT, [&](HWND handle, WPARAM, LPARAM) -> LRESULT {
      PAINTSTRUCT paint{};
      ::BeginPaint(handle, &paint);
      painted = {paint.rcPaint.left, paint.rcPaint.top, paint.rcPaint.right, paint.rcPaint.bottom};
      ::EndPaint(handle, &paint);
      return 0;
    });
    ::ShowScrollBar(window, SB_VERT, FALSE);
    Pump([&] { return !painted.empty(); });
    EXPECT_THAT(painted, ElementsAre(183, 0, 200, 200));
    ::InvalidateRect(window, nullptr, FALSE);
    ::ShowScrollBar(window, SB_VERT, TRUE);
    ::UpdateWindow(window);
    EXPECT_THAT(painted, ElementsAre(0, 0, 183, 200));
  });
}

}  // namespace
