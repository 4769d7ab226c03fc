// An owner-drawn popup menu: each item has a text and a 16 x 16 icon in a column of 20 pixels; the
// default item is bold. A submenu is filled as an object of its own; the window of the outermost
// menu receives the messages of all. Used on the service main thread.
#pragma once

#include <string>

#include "frame/callback_window.h"
#include "frame/stop_request.h"
#include "handles/gdi_handles.h"
#include "handles/handle.h"

namespace quillgate {

class OwnerDrawMenu final : public CallbackWindow {
 public:
  OwnerDrawMenu();
  // Each appends an item. The icon is borrowed and may be null. The item takes over the menu of
  // `submenu`, which is empty afterwards; an empty `submenu` adds an item without a submenu.
  void AppendSeparator();
  void Append(const std::wstring& text, WORD command, HICON icon, OwnerDrawMenu& submenu);

  // Makes the item of that command the default, if there is one.
  void SetDefault(WORD command);

  // Shows the menu at the cursor and returns when it has closed: the chosen command, 0 for none or
  // when the program is to stop, -1 when the cursor position cannot be determined.
  int Track(StopRequest& stop);

 private:
  int TrackAt(POINT position, const StopRequest& stop);

  LRESULT WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;

  bool Insert(MENUITEMINFOW item);
  void MeasureItem(MEASUREITEMSTRUCT& item) const;
  void DrawItem(const DRAWITEMSTRUCT& item) const;
  void DrawText(const DRAWITEMSTRUCT& item) const;
  // Of an item of this menu or of a submenu.
  std::wstring TextOf(UINT command) const;

  MenuHandle menu_;  // created with the first item
  FontHandle normalFont_;
  FontHandle boldFont_;
};

}  // namespace quillgate
