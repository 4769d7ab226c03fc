// The class, the life of its windows and what their messages carry.
#include "grid_host.h"

namespace quillgate {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(GridHostTest, RegisteringTheClassAgainSucceeds) {
  EXPECT_TRUE(RegisterGridClass(::GetModuleHandleW(nullptr)));
  EXPECT_TRUE(RegisterGridClass(::GetModuleHandleW(nullptr)));
  WNDCLASSW found{};
  ASSERT_TRUE(::GetClassInfoW(::GetModuleHandleW(nullptr), kGridClassName, &found));
  EXPECT_EQ(found.style, UINT{CS_HREDRAW | CS_VREDRAW});
  EXPECT_EQ(found.hIcon, nullptr);
  EXPECT_EQ(found.hCursor, nullptr);
  EXPECT_EQ(found.hbrBackground, ::GetStockObject(GRAY_BRUSH));
}

TEST_F(GridHostTest, ASecondGridOfTheSameIdentifierIsNotCreatedAndTheFirstGoesOn) {
  const HWND first = MakeGrid();
  Store(first, {1, 1}, L"kept");
  EXPECT_EQ(MakeGrid(), nullptr);
  EXPECT_EQ(TextOf(first, {1, 1}), L"kept");
  EXPECT_EQ(Send(first, GCM_GETROWS), 100);
}

TEST_F(GridHostTest, AGridWithoutAnIdentifierIsNotCreated) {
  EXPECT_EQ(MakeGrid(0), nullptr);
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
  EXPECT_EQ(Send(grid, GCM_GETROWHEIGHT), 21);
  EXPECT_EQ(Send(grid, GCM_GETHEADERHEIGHT), 21);
  EXPECT_EQ(Send(grid, GCM_GETCOLWIDTH, 0), 50);
  Send(grid, GCM_SETCOLWIDTH, 3, 77);
  Send(grid, GCM_SETSIZE, 7, 24);
  ::DestroyWindow(grid);

  grid = MakeGrid();
  EXPECT_EQ(Send(grid, GCM_GETROWHEIGHT), 20);
  EXPECT_EQ(Send(grid, GCM_GETHEADERHEIGHT), 20);
  EXPECT_EQ(Send(grid, GCM_GETCOLWIDTH, 0), 40);
  EXPECT_EQ(Send(grid, GCM_GETCOLWIDTH, 3), 50);
  EXPECT_EQ(Send(grid, GCM_GETROWS), 100);
  EXPECT_EQ(Send(grid, GCM_GETCOLS), 255);
  ::DestroyWindow(grid);

  RegisterGridClass(::GetModuleHandleW(nullptr));
  grid = MakeGrid();
  EXPECT_EQ(Send(grid, GCM_GETROWHEIGHT), 21);
  EXPECT_EQ(Send(grid, GCM_GETCOLWIDTH, 0), 50);
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
  for (const GridCell cell : {GridCell{32001, 1}, GridCell{1, 257}}) {
    for (const UINT message : {GCM_SETPROTECT, GCM_SETCELL, GCM_GETCELL, GCM_DELETECELL,
                               GCM_GETCELLTYPE, GCM_GETPROTECT}) {
      EXPECT_EQ(SendCell(grid, message, cell, text), -1) << message;
      EXPECT_THAT(TakeTold(), ElementsAre(Told{kGridId, GCN_BADCELL, 0})) << message;
    }
  }
  EXPECT_STREQ(buffer, L"old");
  EXPECT_EQ(Send(grid, GCM_SETCELL, 0, text), -1);
  TakeTold();
  EXPECT_EQ(Store(grid, {-5, 1}, L"low"), 0);
  EXPECT_EQ(TextOf(grid, {-5, 1}), L"low");
  EXPECT_THAT(TakeTold(), IsEmpty());
}

TEST_F(GridHostTest, WhatIsStoredHasTheTypeOfItsText) {
  const HWND grid = MakeGrid();
  const std::pair<const wchar_t*, int> cases[] = {{L"tRuE", 3},  {L"False", 4}, {L"12.5", 2},
                                                  {L"1.2.3", 1}, {L"-5", 2},    {L"5-", 1},
                                                  {L"~7", 5},    {L"", 1},      {L"hello", 1}};
  for (const auto& [text, type] : cases) {
    EXPECT_EQ(Store(grid, {2, 3}, text), 0);
    EXPECT_EQ(SendCell(grid, GCM_GETCELLTYPE, {2, 3}), type) << text;
    EXPECT_EQ(TextOf(grid, {2, 3}), text);
  }
  SendCell(grid, GCM_DELETECELL, {2, 3});
  EXPECT_EQ(SendCell(grid, GCM_GETCELLTYPE, {2, 3}), 0);
}

TEST_F(GridHostTest, ProtectionIsThatOfTheDefaultOrOfTheMessage) {
  const HWND grid = MakeGrid();
  Store(grid, {1, 1}, L"a");
  Send(grid, GCM_SETDEFAULTPROTECT, 2);
  Store(grid, {1, 2}, L"b");
  SendCell(grid, GCM_SETPROTECT, {1, 3}, 1);
  EXPECT_EQ(SendCell(grid, GCM_GETPROTECT, {1, 1}), 0);
  EXPECT_EQ(SendCell(grid, GCM_GETPROTECT, {1, 2}), 1);
  EXPECT_EQ(SendCell(grid, GCM_GETPROTECT, {1, 3}), 1);
  EXPECT_EQ(SendCell(grid, GCM_GETPROTECT, {9, 9}), 0);
  SendCell(grid, GCM_SETPROTECT, {1, 2}, 0);
  EXPECT_EQ(SendCell(grid, GCM_GETPROTECT, {1, 2}), 0);
  EXPECT_EQ(TextOf(grid, {1, 2}), L"b");
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
  Send(grid, GCM_SETCOLWIDTH, 257, 9);
  Send(grid, GCM_SETCOLWIDTH, 2, -9);
  EXPECT_EQ(Send(grid, GCM_GETCOLWIDTH, 2), 50);
  EXPECT_EQ(Send(grid, GCM_GETCOLWIDTH, 256), 0);
  Send(grid, GCM_SETCOLWIDTH, 256, 9);
  EXPECT_EQ(Send(grid, GCM_GETCOLWIDTH, 256), 9);
  Send(grid, GCM_SETHEADERHEIGHT, 33);
  EXPECT_EQ(Send(grid, GCM_GETHEADERHEIGHT), 33);
}

TEST_F(GridHostTest, StoringBelowTheLastRowAddsRowsUnlessThatIsOff) {
  const HWND grid = MakeGrid();
  Store(grid, {150, 1}, L"x");
  EXPECT_EQ(Send(grid, GCM_GETROWS), 150);
  Send(grid, GCM_SETAUTOROW, 0);
  Store(grid, {160, 1}, L"x");
  EXPECT_EQ(Send(grid, GCM_GETROWS), 150);
  Send(grid, GCM_CLEAR);
  EXPECT_EQ(Send(grid, GCM_GETROWS), 0);
  EXPECT_EQ(TextOf(grid, {150, 1}), L"");
}

TEST_F(GridHostTest, TheCursorIsPutAndToldOnDemandOnly) {
  const HWND grid = MakeGrid();
  TakeTold();
  Send(grid, GCM_SETCURSORPOS, 5, 4);
  EXPECT_EQ(CursorOf(grid), (GridCell{5, 4}));
  Send(grid, GCM_SETCURSORPOS, 101, 1);
  Send(grid, GCM_SETCURSORPOS, 1, 0);
  EXPECT_EQ(CursorOf(grid), (GridCell{5, 4}));
  EXPECT_THAT(TakeTold(), IsEmpty());
  Send(grid, GCM_NOTIFYROW);
  Send(grid, GCM_NOTIFYCOL);
  EXPECT_THAT(
      TakeTold(),
      ElementsAre(Told{kGridId, GCN_ROWCHANGE, At(5, 4)}, Told{kGridId, GCN_SELCHANGE, At(5, 4)},
                  Told{kGridId, GCN_COLCHANGE, At(5, 4)}, Told{kGridId, GCN_SELCHANGE, At(5, 4)}));
}

TEST_F(GridHostTest, ADialogHearsThatTheGridWantsArrowsAndCharacters) {
  const HWND grid = MakeGrid();
  EXPECT_EQ(Send(grid, WM_GETDLGCODE), 0x91);
  EXPECT_EQ(Send(grid, WM_GETDLGCODE, VK_ESCAPE), 0);
  TakeTold();
  MSG message{grid, WM_KEYDOWN, VK_RETURN, 0, 0, {}};
  const auto asked = reinterpret_cast<LPARAM>(&message);
  EXPECT_EQ(Send(grid, WM_GETDLGCODE, VK_RETURN, asked), 0x91);
  EXPECT_THAT(TakeCodes(), ElementsAre(GCN_ROWCHANGE, GCN_SELCHANGE));
  // The character of the same key is asked about too.
  message.message = WM_CHAR;
  EXPECT_EQ(Send(grid, WM_GETDLGCODE, VK_RETURN, asked), 0x91);
  EXPECT_THAT(TakeCodes(), IsEmpty());
  EXPECT_EQ(CursorOf(grid), (GridCell{2, 1}));
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

TEST_F(GridHostTest, TheParentMayEndTheGridWhateverItIsTold) {
  HWND grid = nullptr;
  const std::function<void()> acts[] = {
      [&] {
        SendCell(grid, GCM_GETCELL, {32001, 1});
      },
      [&] {
        Store(grid, {1, 2}, L"~1");
      },
      [&] {
        MoveTo(grid, {120, 60});
      },
      [&] {
        MoveTo(grid, {120, 70});
      },
      [&] {
        Click(grid, {120, 70});
      },
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
      if (code == mortal) ::DestroyWindow(grid);
    };
    for (const auto& act : acts) {
      if (::IsWindow(grid)) act();
    }
    onTold = nullptr;
    EXPECT_FALSE(::IsWindow(grid)) << mortal;
    EXPECT_EQ(Send(other, GCM_GETROWS), 100) << mortal;
    ::DestroyWindow(other);
  }
}

}  // namespace
}  // namespace quillgate
