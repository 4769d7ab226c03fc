// A popup menu of plain texts, such as the menu of a control. Used on the service main thread.
#pragma once

#include <windows.h>

#include <string>

#include "handles/handle.h"

namespace quillgate {

class PopupMenu {
 public:
  PopupMenu() : menu_(::CreatePopupMenu()) {}

  // Appends an item. The text may have a mnemonic; the command is not 0.
  void Append(const std::wstring& text, UINT command, bool enabled) const {
    ::AppendMenuW(menu_.Get(), MF_STRING | (enabled ? MF_ENABLED : MF_GRAYED), command,
                  text.c_str());
  }

  // Shows the menu at a position of the screen and returns when it has closed: the chosen command,
  // 0 for none.
  UINT Track(HWND owner, POINT position) const {
    return static_cast<UINT>(::TrackPopupMenuEx(menu_.Get(), TPM_RETURNCMD | TPM_RIGHTBUTTON,
                                                position.x, position.y, owner, nullptr));
  }

 private:
  MenuHandle menu_;
};

}  // namespace quillgate
