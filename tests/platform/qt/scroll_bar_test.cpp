#include <QScrollBar>
#include <QStyleOptionSlider>
#include <QWheelEvent>

#include "platform/qt/window_fixture.h"

namespace {

using ::testing::ElementsAre;
using ::testing::Pair;

// To tell where its parts are.
struct BarParts final : QScrollBar {
  static QPoint Middle(QScrollBar* bar, QStyle::SubControl part) {
    QStyleOptionSlider option;
    (bar->*&BarParts::initStyleOption)(&option);
    return bar->style()->subControlRect(QStyle::CC_ScrollBar, &option, part, bar).center();
  }
};

void Click(QScrollBar* bar, QStyle::SubControl part) {
  QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, BarParts::Middle(bar, part));
}

class ScrollBarOnDesktop : public NotingWindow<std::pair<int, int>> {
 protected:
  ScrollBarOnDesktop() {
    for (const UINT message : {WM_VSCROLL, WM_HSCROLL}) {
      Hear(message, [this](HWND, WPARAM wParam, LPARAM) {
        notified_.emplace_back(LOWORD(wParam), HIWORD(wParam));
      });
    }
  }
  // In a window with bars from 1 to 10, at 4.
  void WithBars(DWORD style, const std::function<void()>& body) {
    const auto start = [&] {
      ::MoveWindow(window_, 60, 70, 200, 200, TRUE);
      for (const int bar : {SB_HORZ, SB_VERT}) {
        ::SetScrollRange(window_, bar, 1, 10, TRUE);
        ::SetScrollPos(window_, bar, 4, TRUE);
      }
      PumpAll();
      body();
    };
    WithWindow(start, {.style = style});
  }
  QScrollBar* Bar(Qt::Orientation orientation = Qt::Vertical) const {
    for (auto* each : WidgetOf(window_)->findChildren<QScrollBar*>()) {
      if (each->orientation() == orientation && each->isVisible()) return each;
    }
    return nullptr;
  }
};

TEST_F(ScrollBarOnDesktop, TheBarsLieBesideTheClientAreaAndAboveChildren) {
  WithBars(WS_HSCROLL | WS_VSCROLL, [this] {
    EXPECT_EQ(Bar()->geometry(), QRect(183, 0, 17, 183));
    EXPECT_EQ(Bar(Qt::Horizontal)->geometry(), QRect(0, 183, 183, 17));
    const HWND child = CreateChild(window_, {0, 0, 200, 200});
    const QWidget* widget = WidgetOf(window_);
    EXPECT_EQ(widget->childAt(190, 50), Bar());
    EXPECT_EQ(widget->childAt(50, 50), WidgetOf(child));
    EXPECT_NE(widget->childAt(190, 190), WidgetOf(child)) << "the corner";
    ::MoveWindow(window_, 60, 70, 100, 120, TRUE);
    EXPECT_EQ(Bar()->geometry(), QRect(83, 0, 17, 103));
    ::ShowScrollBar(window_, SB_HORZ, FALSE);
    EXPECT_EQ(Bar(Qt::Horizontal), nullptr);
    EXPECT_EQ(Bar()->geometry(), QRect(83, 0, 17, 120));
  });
}

TEST_F(ScrollBarOnDesktop, AClickIsNotifiedAndTheProcedureMovesTheBar) {
  const std::pair<QStyle::SubControl, int> cases[] = {{QStyle::SC_ScrollBarAddLine, SB_LINEDOWN},
                                                      {QStyle::SC_ScrollBarSubLine, SB_LINEUP},
                                                      {QStyle::SC_ScrollBarAddPage, SB_PAGEDOWN},
                                                      {QStyle::SC_ScrollBarSubPage, SB_PAGEUP}};
  for (const auto& [orientation, style, message, which] :
       {std::tuple{Qt::Vertical, WS_VSCROLL, WM_VSCROLL, SB_VERT},
        {Qt::Horizontal, WS_HSCROLL, WM_HSCROLL, SB_HORZ}}) {
    WithBars(style, [&] {
      QScrollBar* bar = Bar(orientation);
      for (const auto& [part, request] : cases) {
        Click(bar, part);
        EXPECT_TRUE(notified_.empty()) << "told inside the desktop's event";
        EXPECT_THAT(Take(), ElementsAre(Pair(request, 0), Pair(SB_ENDSCROLL, 0)));
        EXPECT_EQ(bar->value(), 4) << "it moves by itself";
        EXPECT_EQ(bar->sliderPosition(), 4);
      }
      Hear(message, [&](HWND window, WPARAM wParam, LPARAM) {
        if (LOWORD(wParam) == SB_LINEDOWN) ::SetScrollPos(window, which, 5, TRUE);
      });
      Click(bar, QStyle::SC_ScrollBarAddLine);
      PumpAll();
      EXPECT_EQ(bar->value(), 5);
      EXPECT_FALSE(bar->hasFocus());
      EXPECT_EQ(CountOf(WM_LBUTTONDOWN), 0) << "the window is told of a click on its bar";
    });
  }
}

TEST_F(ScrollBarOnDesktop, TheThumbFollowsTheMouseAndGoesWhereTheProcedurePutsIt) {
  WithBars(WS_VSCROLL, [this] {
    QScrollBar* bar = Bar();
    const QPoint thumb = BarParts::Middle(bar, QStyle::SC_ScrollBarSlider);
    QTest::mousePress(bar, Qt::LeftButton, {}, thumb);
    QTest::mouseMove(bar, thumb + QPoint(0, 40));
    PumpAll();
    ASSERT_FALSE(notified_.empty());
    const int place = notified_.back().second;
    EXPECT_EQ(notified_.back().first, SB_THUMBTRACK);
    EXPECT_GT(place, 4);
    EXPECT_EQ(bar->sliderPosition(), place);
    SCROLLINFO info{sizeof info, SIF_ALL, 0, 0, 0, 0, 0};
    EXPECT_TRUE(::GetScrollInfo(window_, SB_VERT, &info));
    EXPECT_EQ(info.nTrackPos, place);
    EXPECT_EQ(info.nPos, 4);
    ::SetScrollPos(window_, SB_VERT, 2, TRUE);
    EXPECT_EQ(bar->sliderPosition(), place) << "it is torn from under the mouse";
    Take();
    QTest::mouseRelease(bar, Qt::LeftButton, {}, thumb + QPoint(0, 40));
    EXPECT_THAT(Take(), ElementsAre(Pair(SB_THUMBPOSITION, place), Pair(SB_ENDSCROLL, 0)));
    EXPECT_EQ(bar->sliderPosition(), 2);
    EXPECT_EQ(bar->value(), 2);

    const QPointF over(5, 50);
    QWheelEvent wheel(over, bar->mapToGlobal(over), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(bar, &wheel);
    EXPECT_TRUE(Take().empty()) << "the wheel is not the bar's";
    EXPECT_EQ(bar->value(), 2);
  });
}

TEST_F(ScrollBarOnDesktop, WhatABarUncoversIsPainted) {
  WithBars(WS_VSCROLL, [this] {
    std::vector<LONG> painted;
    OnPaint([&](HWND, const PAINTSTRUCT& paint) { painted = EdgesOf(paint.rcPaint); });
    ::ShowScrollBar(window_, SB_VERT, FALSE);
    Pump([&] { return !painted.empty(); });
    EXPECT_THAT(painted, ElementsAre(183, 0, 200, 200));
    ::InvalidateRect(window_, nullptr, FALSE);
    ::ShowScrollBar(window_, SB_VERT, TRUE);
    ::UpdateWindow(window_);
    EXPECT_THAT(painted, ElementsAre(0, 0, 183, 200));
  });
}

}  // namespace
