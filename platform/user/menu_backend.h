// A popup menu to be shown, as plain data, and the desktop's side of showing it. For the window
// thread. Lengths are pixels of 96 to the inch.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/gdi/canvas.h"

namespace platform {

struct TrackedItem {
  // The menu that contains the item.
  HMENU menu = nullptr;
  UINT command = 0;
  std::wstring text;
  ULONG_PTR data = 0;
  bool isSeparator = false;
  bool isOwnerDrawn = false;
  bool isDefault = false;
  bool isEnabled = true;
  bool isChecked = false;
  bool opensSubmenu = false;
  std::vector<TrackedItem> submenu;
};

struct TrackedMenu {
  HWND owner = nullptr;
  POINT place{};
  UINT flags = 0;  // TPM_...
  std::vector<TrackedItem> items;
};

// What the desktop queries and reports while a menu is open. The items passed are those of the
// shown menu.
class MenuEvents {
 public:
  virtual ~MenuEvents() = default;

  virtual SIZE Measure(const TrackedItem& item) = 0;
  // Draws the item into the area; `action` and `state` are those of WM_DRAWITEM.
  virtual void Draw(const TrackedItem& item, UINT action, UINT state, Canvas& canvas,
                    const RECT& area) = 0;
  // The chosen command, or 0 for none. May be called more than once; the first call counts.
  virtual void OnClosed(UINT command) = 0;
};

// A menu on the screen; closed by its destructor.
class ShownMenu {
 public:
  virtual ~ShownMenu() = default;
};

class MenuBackend {
 public:
  virtual ~MenuBackend() = default;

  // Shows the menu and returns at once. The menu and the events must outlive the returned object.
  virtual std::unique_ptr<ShownMenu> Show(const TrackedMenu& menu, MenuEvents& events) = 0;
};

}  // namespace platform
