// Creates dialogs from templates. Used on the thread that is to own the dialog.
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

// Creates the dialog with its controls and sends WM_INITDIALOG. Shows the dialog if it is modal or
// the template has WS_VISIBLE. Null, with the last error set, when a style is not supported (a log
// line names it), a control cannot be created, or the dialog was destroyed meanwhile.
HWND CreateDialogFrom(const DialogTemplate& dialogTemplate, const DialogOrigin& origin);

// Moves the focus to the control or, if that cannot take the focus, to the first control in Tab
// order.
void FocusFirst(HWND dialog, HWND control);

// Bounds of a top-level dialog of that size, centred in the work area of the screen at the point.
RECT CentredBounds(SIZE size, POINT around);

}  // namespace platform
