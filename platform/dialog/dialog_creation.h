// Makes dialogs from templates. Used on the thread that is to own the dialog.
#pragma once

#include <windows.h>

#include "platform/dialog/dialog_template.h"

namespace platform {

struct DialogOrigin {
  HINSTANCE instance = nullptr;
  HWND owner = nullptr;  // the parent of a dialog that is a child
  DLGPROC procedure = nullptr;
  LPARAM parameter = 0;  // of WM_INITDIALOG
  bool isModal = false;
};

// The dialog with all its controls, after WM_INITDIALOG; shown if the template says WS_VISIBLE, and
// if it is modal in any case. Null, with the last error, when a style is not supported (a log line
// tells which), a control cannot be made, or the dialog was destroyed by what it did itself.
HWND CreateDialogFrom(const DialogTemplate& made, const DialogOrigin& origin);

// Gives the keyboard to the control, or if that takes none to the first one in Tab's order.
void FocusFirst(HWND dialog, HWND control);

// The place that centres a top-level dialog of that size in the work area around a place.
RECT CentredBounds(SIZE size, POINT around);

}  // namespace platform
