// What the user does with real clicks and keys. Cells are 50 wide and 21 high, as are the headings.
#include <QAbstractSlider>
#include <QScrollBar>

#include "grid_host.h"

namespace quillgate {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The middle of a data cell of a grid that is not scrolled.
QPoint MiddleOf(std::int32_t row, std::int32_t col) {
  return {50 * col + 25, 21 * row + 10};
}

class GridInputTest : public GridHostTest {
 protected:
  GridInputTest() : grid_(MakeGrid()) { Send(grid_, GCM_SETEDITABLE, 1); }

  // With the focus, and the cursor in that cell.
  void StartAt(std::int32_t row, std::int32_t col) {
    ::SetFocus(grid_);
    Send(grid_, GCM_SETCURSORPOS, static_cast<WPARAM>(row), col);
    Flow();
    TakeTold();
  }

  HWND grid_;
};

TEST_F(GridInputTest, AClickTakesTheFocusAndMovesTheCursorBeforeItIsTold) {
  TakeTold();
  Click(grid_, MiddleOf(3, 2));
  EXPECT_EQ(::GetFocus(), grid_);
  EXPECT_THAT(
      TakeTold(),
      ElementsAre(Told{kGridId, GCN_SETFOCUS, 0}, Told{kGridId, GCN_CLICK, At(3, 2)},
                  Told{kGridId, GCN_ROWCHANGE, At(3, 2)}, Told{kGridId, GCN_SELCHANGE, At(3, 2)},
                  Told{kGridId, GCN_COLCHANGE, At(3, 2)}, Told{kGridId, GCN_SELCHANGE, At(3, 2)}));
  Click(grid_, MiddleOf(3, 2));
  EXPECT_THAT(TakeCodes(), ElementsAre(GCN_CLICK));
  Click(grid_, MiddleOf(3, 1));
  EXPECT_THAT(TakeCodes(), ElementsAre(GCN_CLICK, GCN_COLCHANGE, GCN_SELCHANGE));
  Click(grid_, MiddleOf(0, 2));
  Click(grid_, MiddleOf(2, 0));
  EXPECT_THAT(TakeCodes(), IsEmpty());
}

TEST_F(GridInputTest, TypedTextIsStoredByEnter) {
  Click(grid_, MiddleOf(2, 2));
  TakeTold();
  Type(grid_, QString("1~2"));
  EXPECT_THAT(TakeTold(), ElementsAre(Told{kGridId, GCN_EDITBEGIN, At(2, 2)}));
  EXPECT_EQ(TextOf(grid_, {2, 2}), L"");
  Type(grid_, QString(" Ab"));
  Type(grid_, Qt::Key_Backspace);
  Type(grid_, Qt::Key_Return);
  EXPECT_EQ(TextOf(grid_, {2, 2}), L"12 A");
  EXPECT_EQ(CursorOf(grid_), (GridCell{3, 2}));
  EXPECT_THAT(TakeCodes(), ElementsAre(GCN_EDITEND, GCN_ROWCHANGE, GCN_SELCHANGE));
}

TEST_F(GridInputTest, EscapeGivesUpWhatWasTyped) {
  StartAt(2, 2);
  Store(grid_, {2, 2}, L"old");
  Type(grid_, QString("new"));
  Type(grid_, Qt::Key_Escape);
  EXPECT_THAT(TakeCodes(), ElementsAre(GCN_EDITBEGIN, GCN_EDITEND));
  EXPECT_EQ(TextOf(grid_, {2, 2}), L"old");
  Type(grid_, Qt::Key_Escape);
  EXPECT_THAT(TakeCodes(), IsEmpty());
}

TEST_F(GridInputTest, NothingIsTypedWhereTheCellIsProtectedOrTheGridNotEditable) {
  StartAt(1, 1);
  SendCell(grid_, GCM_SETPROTECT, {1, 1}, 1);
  Type(grid_, QString("5"));
  EXPECT_THAT(TakeCodes(), IsEmpty());
  Type(grid_, Qt::Key_Return);
  EXPECT_EQ(CursorOf(grid_), (GridCell{2, 1}));
  TakeTold();
  Send(grid_, GCM_SETEDITABLE, 0);
  Type(grid_, QString("5"));
  EXPECT_THAT(TakeCodes(), IsEmpty());
}

TEST_F(GridInputTest, KeysMoveTheCursorPastHiddenColumns) {
  StartAt(1, 1);
  Send(grid_, GCM_SETCOLWIDTH, 2, 0);
  struct Case {
    Qt::Key key;
    GridCell cursor;
    std::vector<int> codes;
  };
  const std::vector<int> row = {GCN_ROWCHANGE, GCN_SELCHANGE};
  const std::vector<int> col = {GCN_COLCHANGE, GCN_SELCHANGE};
  // A bar at the bottom leaves room for seven whole rows below the headings.
  const Case cases[] = {{Qt::Key_Down, {2, 1}, row},     {Qt::Key_Right, {2, 3}, col},
                        {Qt::Key_Up, {1, 3}, row},       {Qt::Key_Left, {1, 1}, col},
                        {Qt::Key_PageDown, {8, 1}, row}, {Qt::Key_PageUp, {1, 1}, row}};
  for (const Case& each : cases) {
    Type(grid_, each.key);
    EXPECT_EQ(CursorOf(grid_), each.cursor) << each.key;
    EXPECT_EQ(TakeCodes(), each.codes) << each.key;
  }
  Type(grid_, Qt::Key_Up);
  Type(grid_, Qt::Key_Left);
  EXPECT_THAT(TakeCodes(), IsEmpty());
}

TEST_F(GridInputTest, OtherKeysAreForTheParent) {
  StartAt(4, 3);
  Type(grid_, Qt::Key_F1);
  Type(grid_, Qt::Key_F12);
  Type(grid_, Qt::Key_Delete);
  EXPECT_THAT(TakeTold(),
              ElementsAre(Told{kGridId, GCN_FKEY, At(4, 3)}, Told{kGridId, GCN_FKEY + 11, At(4, 3)},
                          Told{kGridId, GCN_DELETEKEY, At(4, 3)}));
  Type(grid_, Qt::Key_Tab);
  EXPECT_EQ(::GetFocus(), Host());
  EXPECT_THAT(TakeTold(), ElementsAre(Told{kGridId, GCN_KILLFOCUS, 0}));
}

TEST_F(GridInputTest, TheCellUnderTheMouseIsToldUnderOneIdentifier) {
  const HWND other = MakeGrid(77);
  TakeMoves();
  MoveTo(other, MiddleOf(3, 2));
  MoveTo(other, MiddleOf(0, 2));
  MoveTo(other, MiddleOf(2, 0));
  EXPECT_THAT(TakeMoves(),
              ElementsAre(std::pair(500, GridCell{3, 2}), std::pair(500, GridCell{0, 2}),
                          std::pair(500, GridCell{2, 0})));
  Send(other, GCM_SETSIZE, 2, 2);
  Send(other, GCM_SETEXTENDLASTCOL, 0);
  MoveTo(other, MiddleOf(4, 4));
  EXPECT_THAT(TakeMoves(), ElementsAre(std::pair(500, GridCell{-1, -1})));
}

TEST_F(GridInputTest, AColumnsBorderIsDragged) {
  Send(grid_, GCM_SETCOLRESIZE, 1);
  const QPoint border{98, 10};
  MoveTo(grid_, border);
  EXPECT_EQ(::GetCursor(), ::LoadCursorW(nullptr, IDC_SIZEWE));
  Press(grid_, border);
  MoveTo(grid_, border + QPoint(30, 5));
  EXPECT_EQ(Send(grid_, GCM_GETCOLWIDTH, 1), 80);
  MoveTo(grid_, border - QPoint(90, 0));
  EXPECT_EQ(Send(grid_, GCM_GETCOLWIDTH, 1), 0);
  MoveTo(grid_, border + QPoint(10, 0));
  Release(grid_, border + QPoint(10, 0));
  EXPECT_EQ(Send(grid_, GCM_GETCOLWIDTH, 1), 60);
  EXPECT_EQ(Send(grid_, GCM_GETCOLWIDTH, 2), 50);
  MoveTo(grid_, {220, 100});
  EXPECT_EQ(::GetCursor(), ::LoadCursorW(nullptr, IDC_ARROW));
  EXPECT_EQ(Send(grid_, GCM_GETCOLWIDTH, 1), 60);
}

TEST_F(GridInputTest, BordersStayWhereTheyAreUnlessTheyMayBeDragged) {
  MoveTo(grid_, {98, 10});
  Press(grid_, {98, 10});
  MoveTo(grid_, {140, 10});
  Release(grid_, {140, 10});
  EXPECT_EQ(Send(grid_, GCM_GETCOLWIDTH, 1), 50);
}

QScrollBar* BarOf(QWidget* widget, Qt::Orientation orientation) {
  for (QScrollBar* bar : widget->findChildren<QScrollBar*>()) {
    if (bar->orientation() == orientation && bar->isVisible()) return bar;
  }
  return nullptr;
}

TEST_F(GridInputTest, TheArrowsOfTheBarsScrollByOneAndTakeTheFocus) {
  QScrollBar* vertical = BarOf(WidgetOf(grid_), Qt::Vertical);
  QScrollBar* horizontal = BarOf(WidgetOf(grid_), Qt::Horizontal);
  ASSERT_NE(vertical, nullptr);
  ASSERT_NE(horizontal, nullptr);
  ::SetFocus(Host());
  QTest::mouseClick(vertical, Qt::LeftButton, Qt::NoModifier,
                    {vertical->width() / 2, vertical->height() - 4});
  Flow();
  EXPECT_EQ(::GetFocus(), grid_);
  EXPECT_EQ(::GetScrollPos(grid_, SB_VERT), 2);
  QTest::mouseClick(horizontal, Qt::LeftButton, Qt::NoModifier,
                    {horizontal->width() - 4, horizontal->height() / 2});
  Flow();
  EXPECT_EQ(::GetScrollPos(grid_, SB_HORZ), 2);
  TakeMoves();
  MoveTo(grid_, MiddleOf(1, 1));
  EXPECT_THAT(TakeMoves(), ElementsAre(std::pair(500, GridCell{2, 2})));
}

TEST_F(GridInputTest, PagesAndTheThumbScrollWithinTheRange) {
  const auto scroll = [&](UINT bar, int request, int place) {
    Send(grid_, bar, MAKEWPARAM(request, place));
    return ::GetScrollPos(grid_, bar == WM_VSCROLL ? SB_VERT : SB_HORZ);
  };
  // 100 rows, seven of which are shown whole.
  EXPECT_EQ(scroll(WM_VSCROLL, SB_PAGEDOWN, 0), 8);
  EXPECT_EQ(scroll(WM_VSCROLL, SB_PAGEUP, 0), 1);
  EXPECT_EQ(scroll(WM_VSCROLL, SB_THUMBTRACK, 40), 40);
  EXPECT_EQ(scroll(WM_VSCROLL, SB_THUMBTRACK, 4000), 94);
  EXPECT_EQ(scroll(WM_VSCROLL, SB_LINEDOWN, 0), 94);
  EXPECT_EQ(scroll(WM_VSCROLL, SB_ENDSCROLL, 0), 94);
  EXPECT_EQ(scroll(WM_HSCROLL, SB_PAGERIGHT, 0), 2);
  EXPECT_EQ(scroll(WM_HSCROLL, SB_THUMBTRACK, 255), 255);
  EXPECT_EQ(scroll(WM_HSCROLL, SB_LINERIGHT, 0), 255);
}

TEST_F(GridInputTest, BarsAreShownOnlyWhereTheyAreNeeded) {
  Send(grid_, GCM_SETSIZE, 5, 4);
  Flow();
  EXPECT_EQ(BarOf(WidgetOf(grid_), Qt::Vertical), nullptr);
  EXPECT_EQ(BarOf(WidgetOf(grid_), Qt::Horizontal), nullptr);
  RECT area{};
  ::GetClientRect(grid_, &area);
  EXPECT_EQ(area.right, 320);
  Send(grid_, GCM_SETSIZE, 50, 4);
  Flow();
  EXPECT_NE(BarOf(WidgetOf(grid_), Qt::Vertical), nullptr);
  EXPECT_EQ(BarOf(WidgetOf(grid_), Qt::Horizontal), nullptr);
  ::GetClientRect(grid_, &area);
  EXPECT_EQ(area.right, 320 - ::GetSystemMetrics(SM_CXVSCROLL));
}

}  // namespace
}  // namespace quillgate
