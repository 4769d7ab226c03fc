// Menus and their owners for tests: they end with their objects.
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

// A hidden window.
class MenuOwner {
 public:
  explicit MenuOwner(WNDPROC procedure = ::DefWindowProcW) {
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = procedure;
    windowClass.lpszClassName = L"MenuOwner";
    ::RegisterClassExW(&windowClass);
    window_ =
        ::CreateWindowExW(0, L"MenuOwner", L"", 0, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
  }
  ~MenuOwner() {
    ::DestroyWindow(window_);
    ::UnregisterClassW(L"MenuOwner", nullptr);
  }
  MenuOwner(const MenuOwner&) = delete;
  MenuOwner& operator=(const MenuOwner&) = delete;

  HWND Get() const { return window_; }

 private:
  HWND window_ = nullptr;
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
