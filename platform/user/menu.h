// Popup menus: lists of items, some of which open further ones. A menu may be used by any thread;
// one lock guards all of them.
#pragma once

#include <windows.h>

#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "platform/kernel/handle_table.h"
#include "platform/user/menu_backend.h"

namespace platform {

struct MenuItem {
  UINT type = MFT_STRING;
  UINT state = MFS_ENABLED;
  UINT command = 0;
  HMENU submenu = nullptr;
  ULONG_PTR data = 0;
  std::wstring text;
};

class Menu final : public Object {
 public:
  // Guarded by MenuLock().
  std::vector<MenuItem> items;
};

std::mutex& MenuLock();

// The menu of a live handle; null, with ERROR_INVALID_MENU_HANDLE as the last error, for any other.
std::shared_ptr<Menu> FindMenu(HMENU handle);

// A copy of the menu's items, submenus included. The menu lock must not be held.
std::vector<TrackedItem> CopyItems(HMENU handle);

}  // namespace platform
