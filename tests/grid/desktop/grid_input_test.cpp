// What the user does with real clicks and keys. Cells are 50 wide and 21 high, as are the headings.
#include <QScrollBar>

#include "grid_host.h"

namespace quillgate {
namespace {

using testing::ElementsAre;

// The middle of a data cell of a grid that is not scrolled.
QPoint MiddleOf(std::int32_t row, std::int32_t col) {
  return {50 * col + 25, 21 * row + 10};
}

class GridInputTest : public GridHostTest {
 protected:
  GridInputTest() : grid_(MakeGrid()) { Send(grid_, GCM_SETEDITABLE, 1); }

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
  Send(grid_, GCM_SETEDITABLE, 0);
  Type(grid_, QString("5"));
  EXPECT_THAT(TakeCodes(), testing::IsEmpty());
}

TEST_F(GridInputTest, KeysMoveTheCursor) {
  ::SetFocus(grid_);
  // A bar at the bottom leaves room for seven whole rows below the headings.
  const std::pair<Qt::Key, GridCell> cases[] = {
      {Qt::Key_Down, {2, 1}}, {Qt::Key_Right, {2, 2}},    {Qt::Key_Up, {1, 2}},
      {Qt::Key_Left, {1, 1}}, {Qt::Key_PageDown, {8, 1}}, {Qt::Key_PageUp, {1, 1}}};
  for (const auto& [key, cursor] : cases) {
    Type(grid_, key);
    EXPECT_EQ(CursorOf(grid_), cursor) << key;
  }
}

TEST_F(GridInputTest, OtherKeysAreForTheParent) {
  Click(grid_, MiddleOf(4, 3));
  TakeTold();
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
  EXPECT_THAT(TakeMoves(), ElementsAre(std::pair(500, GridCell{3, 2})));
}

TEST_F(GridInputTest, AColumnsBorderIsDragged) {
  Send(grid_, GCM_SETCOLRESIZE, 1);
  const QPoint border{98, 10};
  MoveTo(grid_, border);
  EXPECT_EQ(::GetCursor(), ::LoadCursorW(nullptr, IDC_SIZEWE));
  Press(grid_, border);
  MoveTo(grid_, border + QPoint(30, 5));
  EXPECT_EQ(Send(grid_, GCM_GETCOLWIDTH, 1), 80);
  Release(grid_, border + QPoint(30, 5));
  MoveTo(grid_, {220, 100});
  EXPECT_EQ(::GetCursor(), ::LoadCursorW(nullptr, IDC_ARROW));
  EXPECT_EQ(Send(grid_, GCM_GETCOLWIDTH, 1), 80);
  EXPECT_EQ(Send(grid_, GCM_GETCOLWIDTH, 2), 50);
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

TEST_F(GridInputTest, EveryRequestOfABarScrollsInItsDirection) {
  const struct {
    UINT message;
    int request, place, position;
  } cases[] = {
      // 100 rows, seven of which are shown whole.
      {WM_VSCROLL, SB_PAGEDOWN, 0, 8},       {WM_VSCROLL, SB_PAGEUP, 0, 1},
      {WM_VSCROLL, SB_THUMBTRACK, 40, 40},   {WM_VSCROLL, SB_LINEUP, 0, 39},
      {WM_VSCROLL, SB_THUMBTRACK, 4000, 94}, {WM_VSCROLL, SB_ENDSCROLL, 0, 94},
      {WM_HSCROLL, SB_PAGERIGHT, 0, 2},      {WM_HSCROLL, SB_THUMBTRACK, 255, 255},
  };
  for (const auto& each : cases) {
    Send(grid_, each.message, MAKEWPARAM(each.request, each.place));
    EXPECT_EQ(::GetScrollPos(grid_, each.message == WM_VSCROLL ? SB_VERT : SB_HORZ), each.position)
        << each.request;
  }
}

TEST_F(GridInputTest, BarsAreShownOnlyWhereTheyAreNeeded) {
  for (const int rows : {5, 50}) {
    Send(grid_, GCM_SETSIZE, static_cast<WPARAM>(rows), 4);
    Flow();
    EXPECT_EQ(BarOf(WidgetOf(grid_), Qt::Vertical) != nullptr, rows == 50);
    EXPECT_EQ(BarOf(WidgetOf(grid_), Qt::Horizontal), nullptr);
    RECT area{};
    ::GetClientRect(grid_, &area);
    EXPECT_EQ(area.right, rows == 50 ? 320 - ::GetSystemMetrics(SM_CXVSCROLL) : 320);
  }
}

}  // namespace
}  // namespace quillgate
