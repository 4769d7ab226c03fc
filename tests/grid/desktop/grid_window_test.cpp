// The class, the life of its windows and what their messages carry.
#include "grid_host.h"

namespace quillgate {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(GridHostTest, RegisteringTheClassAgainSucceeds) {
  EXPECT_TRUE(RegisterGridClass(::GetModuleHandleW(nullptr)));
  WNDCLASSW found{};
  ASSERT_TRUE(::GetClassInfoW(::GetModuleHandleW(nullptr), kGridClassName, &found));
  EXPECT_EQ(found.style, UINT{CS_HREDRAW | CS_VREDRAW});
  EXPECT_EQ(found.hIcon, nullptr);
  EXPECT_EQ(found.hCursor, nullptr);
  EXPECT_EQ(found.hbrBackground, ::GetStockObject(GRAY_BRUSH));
}

TEST_F(GridHostTest, AGridWithATakenIdentifierOrNoneIsNotCreatedAndTheFirstGoesOn) {
  const HWND first = MakeGrid();
  Store(first, {1, 1}, L"kept");
  for (const int id : {kGridId, 0})
    EXPECT_EQ(MakeGrid(id), nullptr) << id;
  EXPECT_EQ(TextOf(first, {1, 1}), L"kept");
  EXPECT_EQ(Send(first, GCM_GETROWS), 100);
}

TEST_F(GridHostTest, ATwentyFirstGridIsNotCreatedUntilAnotherHasEnded) {
  std::vector<HWND> grids;
  for (int id = 1; id <= 20; ++id)
    grids.push_back(MakeGrid(id));
  EXPECT_THAT(grids, testing::Each(testing::Ne(nullptr)));
  EXPECT_EQ(MakeGrid(21), nullptr);
  Store(grids[4], {1, 1}, L"fifth");
  Store(grids[5], {1, 1}, L"sixth");
  ::DestroyWindow(grids[4]);
  EXPECT_EQ(TextOf(grids[5], {1, 1}), L"sixth");
  const HWND late = MakeGrid(21);
  ASSERT_NE(late, nullptr);
  EXPECT_EQ(TextOf(late, {1, 1}), L"");
}

TEST_F(GridHostTest, AGridInAnEndedOnesPlaceHasTheValuesOfOneThatEnded) {
  HWND grid = MakeGrid();
  Send(grid, GCM_SETCOLWIDTH, 3, 77);
  ::DestroyWindow(grid);
  grid = MakeGrid();
  EXPECT_EQ(Send(grid, GCM_GETROWHEIGHT), 20);
  EXPECT_EQ(Send(grid, GCM_GETCOLWIDTH, 3), 50);
  ::DestroyWindow(grid);
  RegisterGridClass(::GetModuleHandleW(nullptr));
  EXPECT_EQ(Send(MakeGrid(), GCM_GETROWHEIGHT), 21);
}

TEST_F(GridHostTest, AGridThatLivesWhenTheClassIsRegisteredAgainIsDead) {
  const HWND dead = MakeGrid();
  Store(dead, {1, 1}, L"lost");
  RegisterGridClass(::GetModuleHandleW(nullptr));
  const HWND fresh = MakeGrid();
  ASSERT_NE(fresh, nullptr);
  Store(fresh, {1, 1}, L"fresh");
  EXPECT_EQ(Store(dead, {1, 1}, L"stray"), 0);
  EXPECT_EQ(TextOf(fresh, {1, 1}), L"fresh");
  ::DestroyWindow(dead);
  EXPECT_EQ(TextOf(fresh, {1, 1}), L"fresh");
}

TEST_F(GridHostTest, ACellPastTheLimitsIsRefusedOnceByEachMessage) {
  const HWND grid = MakeGrid();
  TakeTold();
  wchar_t buffer[8] = L"old";
  const auto text = reinterpret_cast<LPARAM>(buffer);
  for (const UINT message : {GCM_SETPROTECT, GCM_SETCELL, GCM_GETCELL, GCM_DELETECELL,
                             GCM_GETCELLTYPE, GCM_GETPROTECT}) {
    EXPECT_EQ(SendCell(grid, message, {32001, 1}, text), -1) << message;
    EXPECT_THAT(TakeTold(), ElementsAre(Told{kGridId, GCN_BADCELL, 0})) << message;
  }
  EXPECT_STREQ(buffer, L"old");
  EXPECT_EQ(Send(grid, GCM_SETCELL, 0, text), -1);
  TakeTold();
  EXPECT_EQ(Store(grid, {-5, 1}, L"low"), 0);
  EXPECT_EQ(TextOf(grid, {-5, 1}), L"low");
  EXPECT_THAT(TakeTold(), IsEmpty());
}

TEST_F(GridHostTest, MessagesStoreReadProtectAndDeleteTheirCell) {
  const HWND grid = MakeGrid();
  const GridCell cell{150, 3};
  Send(grid, GCM_SETDEFAULTPROTECT, 2);
  EXPECT_EQ(Store(grid, cell, L"12.5"), 0);
  EXPECT_EQ(TextOf(grid, cell), L"12.5");
  EXPECT_EQ(SendCell(grid, GCM_GETCELLTYPE, cell), 2);
  EXPECT_EQ(SendCell(grid, GCM_GETPROTECT, cell), 1);
  SendCell(grid, GCM_SETPROTECT, cell, 0);
  EXPECT_EQ(SendCell(grid, GCM_GETPROTECT, cell), 0);
  SendCell(grid, GCM_DELETECELL, cell);
  EXPECT_EQ(SendCell(grid, GCM_GETCELLTYPE, cell), 0);
  EXPECT_EQ(Send(grid, GCM_GETROWS), 150);
  Send(grid, GCM_SETAUTOROW, 0);
  Store(grid, {160, 3}, L"x");
  EXPECT_EQ(Send(grid, GCM_GETROWS), 150);
  Send(grid, GCM_CLEAR);
  EXPECT_EQ(Send(grid, GCM_GETROWS), 0);
}

TEST_F(GridHostTest, NumbersInMessagesAreBroughtIntoTheirLimits) {
  const HWND grid = MakeGrid();
  Send(grid, GCM_SETSIZE, 40000, 0);
  EXPECT_EQ(Send(grid, GCM_GETROWS), 32000);
  EXPECT_EQ(Send(grid, GCM_GETCOLS), 1);
  Send(grid, GCM_SETSIZE, static_cast<WPARAM>(-1), 1000);
  EXPECT_EQ(Send(grid, GCM_GETROWS), 32000);
  EXPECT_EQ(Send(grid, GCM_GETCOLS), 256);
  Send(grid, GCM_SETROWHEIGHT, 0);
  EXPECT_EQ(Send(grid, GCM_GETROWHEIGHT), 1);
  Send(grid, GCM_SETCOLWIDTH, 2, -9);
  EXPECT_EQ(Send(grid, GCM_GETCOLWIDTH, 2), 50);
  Send(grid, GCM_SETHEADERHEIGHT, 33);
  EXPECT_EQ(Send(grid, GCM_GETHEADERHEIGHT), 33);
}

TEST_F(GridHostTest, TheCursorIsPutAndToldOnDemandOnly) {
  const HWND grid = MakeGrid();
  TakeTold();
  Send(grid, GCM_SETCURSORPOS, 5, 4);
  EXPECT_EQ(CursorOf(grid), (GridCell{5, 4}));
  EXPECT_THAT(TakeTold(), IsEmpty());
  Send(grid, GCM_NOTIFYROW);
  EXPECT_THAT(TakeCodes(), ElementsAre(GCN_ROWCHANGE, GCN_SELCHANGE));
  Send(grid, GCM_NOTIFYCOL);
  EXPECT_THAT(TakeCodes(), ElementsAre(GCN_COLCHANGE, GCN_SELCHANGE));
}

TEST_F(GridHostTest, ADialogHearsThatTheGridWantsArrowsAndCharacters) {
  const HWND grid = MakeGrid();
  EXPECT_EQ(Send(grid, WM_GETDLGCODE), 0x91);
  EXPECT_EQ(Send(grid, WM_GETDLGCODE, VK_ESCAPE), 0);
  MSG message{grid, WM_KEYDOWN, VK_RETURN, 0, 0, {}};
  // The character of the same key is asked about too.
  for (const UINT asked : {WM_KEYDOWN, WM_CHAR}) {
    message.message = asked;
    EXPECT_EQ(Send(grid, WM_GETDLGCODE, VK_RETURN, reinterpret_cast<LPARAM>(&message)), 0x91);
    EXPECT_EQ(CursorOf(grid), (GridCell{2, 1})) << asked;
  }
}

TEST_F(GridHostTest, ThePartOfTheWindowIsLargeEnoughForTheTitle) {
  const HWND grid = MakeGrid(kGridId, L"Two\nlines");
  // The first data row is below two lines of the title and the headings.
  MoveTo(grid, {80, 25});
  EXPECT_THAT(TakeMoves(), ElementsAre(std::pair(500, GridCell{-1, 1})));
  ::SetWindowTextW(grid, L"");
  MoveTo(grid, {80, 26});
  EXPECT_THAT(TakeMoves(), ElementsAre(std::pair(500, GridCell{1, 1})));
  ::SetWindowTextW(grid, L"Kept");
  wchar_t text[10];
  ::GetWindowTextW(grid, text, 10);
  EXPECT_STREQ(text, L"Kept");
}

// And make another one in its slot, to which nothing of that must happen.
TEST_F(GridHostTest, TheParentMayEndTheGridWhateverItIsTold) {
  HWND grid = nullptr;
  HWND heir = nullptr;
  const GridCell bad{32001, 1};
  const GridCell graphic{1, 2};
  const QPoint place(120, 70);
  const std::function<void()> acts[] = {
      [&] { SendCell(grid, GCM_GETCELL, bad); },
      [&] { Store(grid, graphic, L"~1"); },
      [&] { MoveTo(grid, place - QPoint(0, 10)); },
      [&] { MoveTo(grid, place); },
      [&] { Click(grid, place); },
      [&] { Type(grid, QString("1")); },
      [&] { Type(grid, Qt::Key_Down); },
      [&] { Type(grid, Qt::Key_Delete); },
      [&] { Type(grid, Qt::Key_F1); },
      [&] { Send(grid, GCM_REFRESH); },
      [&] { Type(grid, Qt::Key_Tab); },
  };
  for (const int mortal : {GCN_MOUSEMOVE, GCN_BADCELL, GCN_DRAWGRAPHIC, GCN_SELCHANGE,
                           GCN_ROWCHANGE, GCN_COLCHANGE, GCN_EDITBEGIN, GCN_DELETEKEY, GCN_EDITEND,
                           GCN_FKEY, GCN_SETFOCUS, GCN_KILLFOCUS, GCN_CLICK}) {
    // What was under way when the last one ended would go on in the next.
    RegisterGridClass(::GetModuleHandleW(nullptr));
    const HWND other = MakeGrid(kGridId + 1);
    grid = MakeGrid();
    ASSERT_NE(grid, nullptr) << mortal;
    Send(grid, GCM_SETEDITABLE, 1);
    onTold = [&](HWND, int code, LPARAM) {
      if (code != mortal || !::IsWindow(grid)) return;
      ::DestroyWindow(grid);
      if (code == GCN_DRAWGRAPHIC) return;  // no place to make windows
      heir = MakeGrid();
      Store(heir, {1, 1}, L"heir");
    };
    for (const auto& act : acts) {
      if (::IsWindow(grid)) act();
    }
    onTold = nullptr;
    EXPECT_FALSE(::IsWindow(grid)) << mortal;
    if (mortal != GCN_DRAWGRAPHIC) {
      EXPECT_EQ(CursorOf(heir), (GridCell{1, 1})) << mortal;
      EXPECT_EQ(TextOf(heir, {1, 1}), L"heir") << mortal;
      ::DestroyWindow(heir);
    }
    EXPECT_EQ(Send(other, GCM_GETROWS), 100) << mortal;
    ::DestroyWindow(other);
  }
}

}  // namespace
}  // namespace quillgate
