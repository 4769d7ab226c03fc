// The class, the life of its windows and what their messages carry.
#include "grid_host.h"

namespace quillgate {
namespace {

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
  Store(grid_, {1, 1}, L"kept");
  for (const int id : {kGridId, 0})
    EXPECT_EQ(MakeGrid(id), nullptr) << id;
  EXPECT_EQ(TextOf(grid_, {1, 1}), L"kept");
  EXPECT_EQ(Send(grid_, GCM_GETROWS), 100);
}

TEST_F(GridHostTest, RegisteringTheClassAgainResetsTheValuesAndLeavesALivingGridDead) {
  ::DestroyWindow(grid_);
  const HWND dead = MakeGrid();
  EXPECT_EQ(Send(dead, GCM_GETROWHEIGHT), 20) << "as after one that ended";
  RegisterGridClass(::GetModuleHandleW(nullptr));
  const HWND fresh = MakeGrid();
  EXPECT_EQ(Send(fresh, GCM_GETROWHEIGHT), 21);
  Store(fresh, {1, 1}, L"fresh");
  EXPECT_EQ(Store(dead, {1, 1}, L"stray"), 0);
  ::DestroyWindow(dead);
  EXPECT_EQ(TextOf(fresh, {1, 1}), L"fresh");
}

TEST_F(GridHostTest, ACellPastTheLimitsIsRefusedOnceByEachMessage) {
  TakeNotified();
  wchar_t buffer[8] = L"old";
  const auto text = reinterpret_cast<LPARAM>(buffer);
  for (const UINT message : {GCM_SETPROTECT, GCM_SETCELL, GCM_GETCELL, GCM_DELETECELL,
                             GCM_GETCELLTYPE, GCM_GETPROTECT}) {
    EXPECT_EQ(SendCell(grid_, message, {32001, 1}, text), -1) << message;
    EXPECT_EQ(Send(grid_, message, 0, text), -1) << message;
    EXPECT_EQ(TakeNotified(), "500 3 0,0; 500 3 0,0; ") << message;
  }
  EXPECT_STREQ(buffer, L"old");
  EXPECT_EQ(Store(grid_, {-5, 1}, L"low"), 0);
  EXPECT_EQ(TextOf(grid_, {-5, 1}), L"low");
  EXPECT_EQ(TakeNotified(), "");
}

TEST_F(GridHostTest, EachMessageSetsWhatTheOneOfItsNameTells) {
  TakeNotified();
  const GridCell cells[] = {{150, 3}, {160, 3}};
  const auto cell = reinterpret_cast<WPARAM>(&cells[0]);
  const auto below = reinterpret_cast<WPARAM>(&cells[1]);
  const auto number = reinterpret_cast<LPARAM>(L"12.5");
  const std::tuple<UINT, WPARAM, LPARAM, UINT, WPARAM, LRESULT> cases[] = {
      {GCM_SETDEFAULTPROTECT, 2, 0, GCM_GETPROTECT, cell, 0},
      {GCM_SETCELL, cell, number, GCM_GETCELLTYPE, cell, 2},
      {GCM_SETAUTOROW, 0, 0, GCM_GETPROTECT, cell, 1},
      {GCM_SETCELL, below, number, GCM_GETROWS, 0, 150},
      {GCM_SETPROTECT, cell, 0, GCM_GETPROTECT, cell, 0},
      {GCM_DELETECELL, cell, 0, GCM_GETCELLTYPE, cell, 0},
      {GCM_CLEAR, 0, 0, GCM_GETROWS, 0, 0},
      {GCM_SETSIZE, 40000, 0, GCM_GETROWS, 0, 32000},
      {GCM_SETSIZE, static_cast<WPARAM>(-1), 0, GCM_GETCOLS, 0, 1},
      {GCM_SETSIZE, static_cast<WPARAM>(-1), 1000, GCM_GETROWS, 0, 32000},
      {GCM_SETCURSORPOS, 5, 4, GCM_GETCURSORROW, 0, 5},
      {GCM_SETCURSORPOS, 5, 6, GCM_GETCURSORCOL, 0, 6},
      {GCM_SETROWHEIGHT, 0, 0, GCM_GETROWHEIGHT, 0, 1},
      {GCM_SETCOLWIDTH, 2, -9, GCM_GETCOLWIDTH, 2, 50},
      {GCM_SETHEADERHEIGHT, 33, 0, GCM_GETHEADERHEIGHT, 0, 33},
  };
  for (const auto& [message, wParam, lParam, question, of, answer] : cases) {
    EXPECT_EQ(Send(grid_, message, wParam, lParam), 0) << message;
    EXPECT_EQ(Send(grid_, question, of), answer) << message;
  }
  EXPECT_EQ(Send(grid_, GCM_GETCOLS), 256);
  EXPECT_EQ(TakeNotified(), "500 10 1,1; ") << "only of the deletion";
  Send(grid_, GCM_NOTIFYROW);
  Send(grid_, GCM_NOTIFYCOL);
  EXPECT_EQ(TakeNotified(), "500 6 5,6; 500 5 5,6; 500 7 5,6; 500 5 5,6; ");
}

TEST_F(GridHostTest, ADialogHearsThatTheGridWantsArrowsAndCharacters) {
  EXPECT_EQ(Send(grid_, WM_GETDLGCODE), 0x91);
  EXPECT_EQ(Send(grid_, WM_GETDLGCODE, VK_ESCAPE), 0);
  MSG message{grid_, WM_KEYDOWN, VK_RETURN, 0, 0, {}};
  // The character of the same key is asked about too.
  for (const UINT asked : {WM_KEYDOWN, WM_CHAR}) {
    message.message = asked;
    EXPECT_EQ(Send(grid_, WM_GETDLGCODE, VK_RETURN, reinterpret_cast<LPARAM>(&message)), 0x91);
    EXPECT_EQ(CursorOf(grid_), (GridCell{2, 1})) << asked;
  }
}

TEST_F(GridHostTest, ATitleTakesTheRoomOfItsLinesAndIsTheWindowsText) {
  const HWND grid = MakeGrid(77, L"Two\nlines");
  MoveTo(grid, {80, 25});
  EXPECT_EQ(TakeMoves(), "500 2 -1,1; ");
  ::SetWindowTextW(grid, L"");
  MoveTo(grid, {80, 26});
  EXPECT_EQ(TakeMoves(), "500 2 1,1; ");
  ::SetWindowTextW(grid, L"Kept");
  wchar_t text[10];
  ::GetWindowTextW(grid, text, 10);
  EXPECT_STREQ(text, L"Kept");
}

// And make another one in its slot, to which nothing of that must happen.
TEST_F(GridHostTest, TheParentMayEndTheGridWhateverItIsNotified) {
  const GridCell graphic{1, 2};
  const GridCell pastLimits{32001, 1};
  HWND heir = nullptr;
  ::DestroyWindow(grid_);
  const std::function<void()> acts[] = {
      [&] { SendCell(grid_, GCM_GETCELL, pastLimits); },
      [&] { Store(grid_, graphic, L"~1"); },
      [&] { MoveTo(grid_, QPoint(120, 60)); },
      [&] { MoveTo(grid_, QPoint(120, 70)); },
      [&] { Click(grid_, QPoint(120, 70)); },
      [&] { Type(grid_, "1"); },
      [&] { Type(grid_, Qt::Key_Down); },
      [&] { Type(grid_, Qt::Key_Delete); },
      [&] { Type(grid_, Qt::Key_F1); },
      [&] { Send(grid_, GCM_REFRESH); },
      [&] { Type(grid_, Qt::Key_Tab); },
  };
  for (const int mortal : {GCN_MOUSEMOVE, GCN_BADCELL, GCN_DRAWGRAPHIC, GCN_SELCHANGE,
                           GCN_ROWCHANGE, GCN_COLCHANGE, GCN_EDITBEGIN, GCN_DELETEKEY, GCN_EDITEND,
                           GCN_FKEY, GCN_SETFOCUS, GCN_KILLFOCUS, GCN_CLICK}) {
    // What was under way when the last one ended would go on in the next.
    RegisterGridClass(::GetModuleHandleW(nullptr));
    const HWND other = MakeGrid(kGridId + 1);
    grid_ = MakeGrid();
    Send(grid_, GCM_SETEDITABLE, 1);
    onNotified = [&](int code, LPARAM) {
      if (code != mortal || !::IsWindow(grid_)) return;
      ::DestroyWindow(grid_);
      if (code == GCN_DRAWGRAPHIC) return;  // no place to make windows
      heir = MakeGrid();
      Store(heir, {1, 1}, L"heir");
    };
    for (const auto& act : acts) {
      if (::IsWindow(grid_)) act();
    }
    onNotified = nullptr;
    EXPECT_FALSE(::IsWindow(grid_)) << mortal;
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
