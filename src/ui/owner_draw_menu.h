// A popup menu whose items are drawn by the program: a text and an icon of 16 x 16 in a column of
// 20 pixels, the default item bold. A submenu is an object of its own; the outermost one's window
// hears of all. Lives on the service main thread.
#pragma once

#include <string>

#include "frame/callback_window.h"
#include "frame/stop_request.h"
#include "handles/gdi_handles.h"
#include "handles/handle.h"

namespace quillgate {

struct MenuTrait {
  using Type = HMENU;
  static Type Invalid() { return nullptr; }
  static void Close(Type menu) { ::DestroyMenu(menu); }
};
// A menu that is not part of another one; its submenus go with it.
using MenuHandle = UniqueHandle<MenuTrait>;

class OwnerDrawMenu final : public CallbackWindow {
 public:
  OwnerDrawMenu();
  // Each appends an item. The icon, which may be null, is borrowed. The submenu gives its items
  // away and is empty afterwards; one without items makes no submenu.
  void AppendSeparator();
  void Append(const std::wstring& text, WORD command, HICON icon, OwnerDrawMenu& submenu);

  // Marks the item of that command, if there is one.
  void SetDefault(WORD command);

  // Shows the menu at the cursor and returns when it has closed: the chosen command, 0 for none or
  // when the program is to stop, -1 when the cursor's place is not known.
  int Track(StopRequest& stop);

 private:
  int TrackAt(POINT place, const StopRequest& stop);

  LRESULT WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;

  bool Insert(MENUITEMINFOW item);
  void MeasureItem(MEASUREITEMSTRUCT& item) const;
  void DrawItem(const DRAWITEMSTRUCT& item) const;
  void DrawText(const DRAWITEMSTRUCT& item) const;
  // Of this menu or a submenu.
  std::wstring TextOf(UINT command) const;

  MenuHandle menu_;  // made with the first item
  FontHandle normalFont_;
  FontHandle boldFont_;
};

}  // namespace quillgate
