// Menus as data: what is put in comes out again, and what cannot be is told.
#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <deque>
#include <string>

#include "menu_fixture.h"
#include "platform/testing/simulated_machine.h"
#include "platform/user/menu_tracking.h"

namespace {

using ::testing::ElementsAre;

std::vector<UINT> CommandsOf(HMENU menu) {
  std::vector<UINT> commands;
  for (int position = 0; position < ::GetMenuItemCount(menu); ++position) {
    MENUITEMINFOW item = AskFor(MIIM_ID);
    EXPECT_TRUE(::GetMenuItemInfoW(menu, static_cast<UINT>(position), TRUE, &item));
    commands.push_back(item.wID);
  }
  return commands;
}

UINT StateOf(HMENU menu, UINT command) {
  MENUITEMINFOW item = AskFor(MIIM_STATE);
  EXPECT_TRUE(::GetMenuItemInfoW(menu, command, FALSE, &item));
  return item.fState;
}

TEST(Menu, ItemsGoBeforeTheOneThatIsNamedElseToTheEnd) {
  const OwnedMenu menu;
  InsertItem(menu.Get(), 1, L"One");
  InsertItem(menu.Get(), 2, L"Two");
  MENUITEMINFOW item = AskFor(MIIM_ID);
  item.wID = 3;
  EXPECT_TRUE(::InsertMenuItemW(menu.Get(), 0, TRUE, &item));
  item.wID = 4;
  EXPECT_TRUE(::InsertMenuItemW(menu.Get(), 2, FALSE, &item));
  item.wID = 5;
  EXPECT_TRUE(::InsertMenuItemW(menu.Get(), 77, FALSE, &item));
  EXPECT_THAT(CommandsOf(menu.Get()), ElementsAre(3, 1, 4, 2, 5));
}

TEST(Menu, AnItemGivesBackWhatItWasGiven) {
  const OwnedMenu menu;
  const HMENU submenu = ::CreatePopupMenu();
  std::wstring text = L"Help";
  MENUITEMINFOW given = AskFor(MIIM_FTYPE | MIIM_STRING | MIIM_ID | MIIM_DATA | MIIM_SUBMENU);
  given.fType = MFT_OWNERDRAW;
  given.dwTypeData = text.data();
  given.wID = 7;
  given.dwItemData = 0x1234;
  given.hSubMenu = submenu;
  ASSERT_TRUE(::InsertMenuItemW(menu.Get(), 0, TRUE, &given));

  WCHAR room[10];
  MENUITEMINFOW item = AskFor(MIIM_FTYPE | MIIM_STRING | MIIM_ID | MIIM_DATA | MIIM_SUBMENU);
  item.dwTypeData = room;
  item.cch = 10;
  ASSERT_TRUE(::GetMenuItemInfoW(menu.Get(), 7, FALSE, &item));
  EXPECT_EQ(item.fType, MFT_OWNERDRAW);
  EXPECT_STREQ(room, L"Help");
  EXPECT_EQ(item.cch, 4u);
  EXPECT_EQ(item.dwItemData, 0x1234u);
  EXPECT_EQ(item.hSubMenu, submenu);
}

TEST(Menu, ATextIsCutToTheRoomAndItsLengthToldWithoutRoom) {
  const OwnedMenu menu;
  InsertItem(menu.Get(), 1, L"Statistics");
  MENUITEMINFOW item = AskFor(MIIM_STRING);
  ASSERT_TRUE(::GetMenuItemInfoW(menu.Get(), 1, FALSE, &item));
  EXPECT_EQ(item.cch, 10u);
  WCHAR room[5];
  item.dwTypeData = room;
  item.cch = 5;
  ASSERT_TRUE(::GetMenuItemInfoW(menu.Get(), 1, FALSE, &item));
  EXPECT_STREQ(room, L"Stat");
  EXPECT_EQ(item.cch, 4u);
}

TEST(Menu, CommandsAreFoundInSubmenusToo) {
  const OwnedMenu menu;
  const HMENU submenu = ::CreatePopupMenu();
  InsertItem(menu.Get(), 2, L"Help", submenu);
  InsertItem(submenu, 11, L"About");
  EXPECT_EQ(StateOf(menu.Get(), 11), MFS_ENABLED);
  EXPECT_EQ(StateOf(menu.Get(), 2), MFS_ENABLED);
}

TEST(Menu, OneItemIsTheDefaultOrNone) {
  const OwnedMenu menu;
  InsertItem(menu.Get(), 1, L"One");
  InsertItem(menu.Get(), 2, L"Two");
  EXPECT_TRUE(::SetMenuDefaultItem(menu.Get(), 1, FALSE));
  EXPECT_TRUE(::SetMenuDefaultItem(menu.Get(), 1, TRUE));
  EXPECT_EQ(StateOf(menu.Get(), 1), MFS_ENABLED);
  EXPECT_EQ(StateOf(menu.Get(), 2), MFS_DEFAULT);
  EXPECT_FALSE(::SetMenuDefaultItem(menu.Get(), 5, FALSE));
  EXPECT_EQ(::GetLastError(), ERROR_MENU_ITEM_NOT_FOUND);
  EXPECT_EQ(StateOf(menu.Get(), 2), MFS_ENABLED);
}

TEST(Menu, SubmenusEndWithTheirMenu) {
  const HMENU menu = ::CreatePopupMenu();
  const HMENU submenu = ::CreatePopupMenu();
  InsertItem(menu, 2, L"Help", submenu);
  EXPECT_TRUE(::DestroyMenu(menu));
  for (const HMENU stale : {menu, submenu}) {
    ::SetLastError(NO_ERROR);
    EXPECT_EQ(::GetMenuItemCount(stale), -1);
    EXPECT_EQ(::GetLastError(), ERROR_INVALID_MENU_HANDLE);
    EXPECT_FALSE(::DestroyMenu(stale));
    EXPECT_FALSE(::SetMenuDefaultItem(stale, 0, TRUE));
  }
}

TEST(Menu, WhatIsNotSupportedIsRefused) {
  const OwnedMenu menu;
  MENUITEMINFOW item = AskFor(MIIM_TYPE | MIIM_STRING);
  EXPECT_FALSE(::InsertMenuItemW(menu.Get(), 0, TRUE, &item));
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_PARAMETER);
  item = AskFor(MIIM_FTYPE);
  item.fType = 0x4;
  EXPECT_FALSE(::InsertMenuItemW(menu.Get(), 0, TRUE, &item));
  item = AskFor(MIIM_ID);
  item.cbSize -= 8;
  EXPECT_FALSE(::InsertMenuItemW(menu.Get(), 0, TRUE, &item));
  item = AskFor(MIIM_SUBMENU);
  item.hSubMenu = menu.Get();
  EXPECT_FALSE(::InsertMenuItemW(menu.Get(), 0, TRUE, &item));
  EXPECT_EQ(::GetMenuItemCount(menu.Get()), 0);
  EXPECT_FALSE(::GetMenuItemInfoW(menu.Get(), 0, TRUE, &item));
  EXPECT_EQ(::GetLastError(), ERROR_MENU_ITEM_NOT_FOUND);
}

class MenuTrackingTest : public ::testing::Test {
 protected:
  UINT Track(UINT flags = TPM_RETURNCMD) {
    return static_cast<UINT>(::TrackPopupMenuEx(menu_.Get(), flags, 20, 30, owner_.Get(), nullptr));
  }

  platform::SimulatedMachine machine_;
  const HiddenWindow owner_;
  const OwnedMenu menu_;
};

TEST_F(MenuTrackingTest, AMenuIsShownAsItIsAndItsAnswerReturned) {
  const HMENU submenu = ::CreatePopupMenu();
  InsertItem(menu_.Get(), 5, L"Statistics...");
  InsertItem(menu_.Get(), 2, L"Help", submenu);
  InsertItem(submenu, 11, L"About");
  ::SetMenuDefaultItem(menu_.Get(), 5, FALSE);
  machine_.AnswerMenus({11});
  EXPECT_EQ(Track(), 11u);
  EXPECT_EQ(Track(), 0u);
  ASSERT_EQ(machine_.Menus().size(), 2u);
  const platform::TrackedMenu shown = machine_.Menus()[0];
  EXPECT_EQ(shown.owner, owner_.Get());
  EXPECT_EQ(shown.place.x, 20);
  EXPECT_EQ(shown.place.y, 30);
  ASSERT_EQ(shown.items.size(), 2u);
  EXPECT_EQ(shown.items[0].text, L"Statistics...");
  EXPECT_TRUE(shown.items[0].isDefault);
  ASSERT_EQ(shown.items[1].submenu.size(), 1u);
  EXPECT_EQ(shown.items[1].submenu[0].command, 11u);
}

TEST_F(MenuTrackingTest, AMenuWithoutADesktopFailsAndIsOnRecord) {
  platform::SetMenuTracker({});
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(Track(), 0u);
  EXPECT_EQ(::GetLastError(), ERROR_REQUIRES_INTERACTIVE_WINDOWSTATION);
  EXPECT_THAT(::testing::internal::GetCapturedStderr(), ::testing::HasSubstr("popup menu"));
}

TEST_F(MenuTrackingTest, ASecondMenuIsRefusedWhileOneIsOpen) {
  platform::SetMenuTracker([this](const platform::TrackedMenu&) {
    EXPECT_EQ(Track(), 0u);
    EXPECT_EQ(::GetLastError(), ERROR_POPUP_ALREADY_ACTIVE);
    return 4u;
  });
  EXPECT_EQ(Track(), 4u);
  EXPECT_EQ(Track(), 4u);
}

TEST_F(MenuTrackingTest, WhatCannotBeTrackedIsToldWhy) {
  EXPECT_EQ(Track(0), 0u);
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(::TrackPopupMenuEx(nullptr, TPM_RETURNCMD, 0, 0, owner_.Get(), nullptr), 0);
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_MENU_HANDLE);
  EXPECT_EQ(::TrackPopupMenuEx(menu_.Get(), TPM_RETURNCMD, 0, 0, nullptr, nullptr), 0);
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_WINDOW_HANDLE);
  EXPECT_TRUE(machine_.Menus().empty());
}

TEST_F(MenuTrackingTest, TheCursorIsWhereTheMachineSays) {
  POINT place{};
  machine_.SetCursorPlace(POINT{3, 4});
  EXPECT_TRUE(::GetCursorPos(&place));
  EXPECT_EQ(place.x, 3);
  EXPECT_EQ(place.y, 4);
  machine_.SetCursorPlace({});
  EXPECT_FALSE(::GetCursorPos(&place));
}

}  // namespace
