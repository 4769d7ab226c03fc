// Menus as data: what is put in comes out again.
#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/kit/failing_call.h"
#include "platform/kit/hidden_window.h"
#include "platform/menu/menu_fixture.h"

namespace {

using ::testing::ElementsAre;

class MenuTest : public ::testing::Test {
 protected:
  UINT StateOf(UINT command) const {
    MENUITEMINFOW item = AskFor(MIIM_STATE);
    EXPECT_TRUE(::GetMenuItemInfoW(menu_.Get(), command, FALSE, &item));
    return item.fState;
  }

  const OwnedMenu menu_;
};

TEST_F(MenuTest, ItemsGoBeforeTheOneThatIsNamedElseToTheEnd) {
  InsertItem(menu_.Get(), 1, L"One");
  InsertItem(menu_.Get(), 2, L"Two");
  for (const auto& [command, before, byPosition] :
       {std::tuple{3u, 0u, TRUE}, {4u, 2u, FALSE}, {5u, 77u, FALSE}}) {
    MENUITEMINFOW item = AskFor(MIIM_ID);
    item.wID = command;
    EXPECT_TRUE(::InsertMenuItemW(menu_.Get(), before, byPosition, &item));
  }
  std::vector<UINT> commands;
  for (int position = 0; position < ::GetMenuItemCount(menu_.Get()); ++position) {
    MENUITEMINFOW item = AskFor(MIIM_ID);
    EXPECT_TRUE(::GetMenuItemInfoW(menu_.Get(), static_cast<UINT>(position), TRUE, &item));
    commands.push_back(item.wID);
  }
  EXPECT_THAT(commands, ElementsAre(3, 1, 4, 2, 5));
}

TEST_F(MenuTest, AnItemGivesBackWhatItWasGivenAndItsTextCutToTheRoom) {
  std::wstring text = L"Help";
  MENUITEMINFOW given = AskFor(MIIM_FTYPE | MIIM_STRING | MIIM_ID | MIIM_DATA | MIIM_SUBMENU);
  given.fType = MFT_OWNERDRAW;
  given.dwTypeData = text.data();
  given.wID = 7;
  given.dwItemData = 0x1234;
  given.hSubMenu = ::CreatePopupMenu();
  ASSERT_TRUE(::InsertMenuItemW(menu_.Get(), 0, TRUE, &given));

  MENUITEMINFOW item = AskFor(given.fMask);
  ASSERT_TRUE(::GetMenuItemInfoW(menu_.Get(), 7, FALSE, &item));
  EXPECT_EQ(item.fType, MFT_OWNERDRAW);
  EXPECT_EQ(item.dwItemData, 0x1234u);
  EXPECT_EQ(item.hSubMenu, given.hSubMenu);
  EXPECT_EQ(item.cch, 4u) << "without room the length is told";
  WCHAR room[5];
  item.dwTypeData = room;
  item.cch = 4;
  ASSERT_TRUE(::GetMenuItemInfoW(menu_.Get(), 7, FALSE, &item));
  EXPECT_STREQ(room, L"Hel");
  EXPECT_EQ(item.cch, 3u);
}

TEST_F(MenuTest, CommandsAreFoundInSubmenusTooAndOneItemIsTheDefaultOrNone) {
  const HMENU submenu = ::CreatePopupMenu();
  InsertItem(menu_.Get(), 1, L"One");
  InsertItem(menu_.Get(), 2, L"Two", submenu);
  InsertItem(submenu, 11, L"About");
  EXPECT_TRUE(::SetMenuDefaultItem(menu_.Get(), 1, FALSE));
  EXPECT_TRUE(::SetMenuDefaultItem(menu_.Get(), 1, TRUE));
  EXPECT_EQ(StateOf(1), MFS_ENABLED);
  EXPECT_EQ(StateOf(2), MFS_DEFAULT);
  EXPECT_EQ(StateOf(11), MFS_ENABLED);
  EXPECT_EQ(ErrorOf(::SetMenuDefaultItem(menu_.Get(), 5, FALSE)), DWORD{ERROR_MENU_ITEM_NOT_FOUND});
  EXPECT_EQ(StateOf(2), MFS_ENABLED);
}

TEST_F(MenuTest, AnAppendedItemComesLastAndMayBeDisabled) {
  EXPECT_TRUE(::AppendMenuW(menu_.Get(), MF_STRING | MF_GRAYED, 5, L"Copy"));
  EXPECT_TRUE(::AppendMenuW(menu_.Get(), MF_STRING | MF_ENABLED, 6, L"Select all"));
  EXPECT_EQ(StateOf(5), MFS_GRAYED);
  EXPECT_EQ(StateOf(6), MFS_ENABLED);
  MENUITEMINFOW last = AskFor(MIIM_ID);
  EXPECT_TRUE(::GetMenuItemInfoW(menu_.Get(), 1, TRUE, &last));
  EXPECT_EQ(last.wID, 6u);
}

TEST_F(MenuTest, StaleMenusAndItemsThatCannotBeFail) {
  constexpr DWORD kInvalid = ERROR_INVALID_PARAMETER;
  constexpr DWORD kNoMenu = ERROR_INVALID_MENU_HANDLE;
  constexpr DWORD kNoWindow = ERROR_INVALID_WINDOW_HANDLE;
  const HiddenWindow owner;
  const HMENU stale = ::CreatePopupMenu();
  const HMENU submenu = ::CreatePopupMenu();
  InsertItem(stale, 2, L"Help", submenu);
  EXPECT_TRUE(::DestroyMenu(stale));
  const auto insert = [this](const MENUITEMINFOW& item) {
    return ::InsertMenuItemW(menu_.Get(), 0, TRUE, &item);
  };
  const auto track = [](HMENU menu, HWND window) {
    return ::TrackPopupMenuEx(menu, TPM_RETURNCMD, 0, 0, window, nullptr);
  };
  MENUITEMINFOW small = AskFor(MIIM_ID);
  small.cbSize -= 8;
  MENUITEMINFOW endless = AskFor(MIIM_SUBMENU);
  endless.hSubMenu = menu_.Get();
  MENUITEMINFOW item = AskFor(MIIM_ID);
  constexpr DWORD kNoItem = ERROR_MENU_ITEM_NOT_FOUND;
  ExpectFailures({
      {"its submenu", [&] { return ::GetMenuItemCount(submenu) != -1; }, kNoMenu},
      {"GetMenuItemCount", [&] { return ::GetMenuItemCount(stale) != -1; }, kNoMenu},
      {"DestroyMenu", [&] { return ::DestroyMenu(stale); }, kNoMenu},
      {"SetMenuDefaultItem", [&] { return ::SetMenuDefaultItem(stale, 0, TRUE); }, kNoMenu},
      {"AppendMenuW", [&] { return ::AppendMenuW(stale, MF_STRING, 1, L""); }, kNoMenu},
      {"a check mark", [&] { return ::AppendMenuW(menu_.Get(), 8, 1, L""); }, kInvalid},
      {"both ways", [&] { return insert(AskFor(MIIM_TYPE | MIIM_STRING)); }, kInvalid},
      {"another size", [&] { return insert(small); }, kInvalid},
      {"in itself", [&] { return insert(endless); }, kInvalid},
      {"no item", [&] { return ::GetMenuItemInfoW(menu_.Get(), 0, TRUE, &item); }, kNoItem},
      {"TrackPopupMenuEx", [&] { return track(nullptr, owner.Get()); }, kNoMenu},
      {"TrackPopupMenuEx", [&] { return track(menu_.Get(), nullptr); }, kNoWindow},
  });
  EXPECT_EQ(::GetMenuItemCount(menu_.Get()), 0);
}

}  // namespace
