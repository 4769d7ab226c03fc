// Menus for tests: they end with their objects.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

class OwnedMenu {
 public:
  OwnedMenu() : menu_(::CreatePopupMenu()) {}
  ~OwnedMenu() { ::DestroyMenu(menu_); }
  OwnedMenu(const OwnedMenu&) = delete;
  OwnedMenu& operator=(const OwnedMenu&) = delete;

  HMENU Get() const { return menu_; }

 private:
  const HMENU menu_;
};

inline MENUITEMINFOW AskFor(UINT mask) {
  MENUITEMINFOW item{};
  item.cbSize = sizeof item;
  item.fMask = mask;
  return item;
}

// At the end. A text of "-" makes a separator.
inline void InsertItem(HMENU menu, UINT command, std::wstring text, HMENU submenu = nullptr,
                       UINT type = MFT_STRING) {
  MENUITEMINFOW item = AskFor(MIIM_FTYPE | MIIM_STRING | MIIM_ID | MIIM_SUBMENU);
  item.fType = text == L"-" ? MFT_SEPARATOR : type;
  item.dwTypeData = text.data();
  item.wID = command;
  item.hSubMenu = submenu;
  ASSERT_TRUE(::InsertMenuItemW(menu, static_cast<UINT>(-1), TRUE, &item));
}
