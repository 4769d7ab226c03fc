// The grid of the hours editor: a row of hour headings, and below it one row for each day of the
// week with a cell for each hour, green where connecting is allowed and red where it is blocked.
// Owned by the editor; used on the service main thread while the dialog is open. If the system
// refuses the window, every function is ignored.
#pragma once

#include <windows.h>

#include <string>

#include "grid/grid_notifications.h"
#include "grid/grid_types.h"
#include "handles/gdi_handles.h"

namespace quillgate {

// A grid sends GCN_MOUSEMOVE with this identifier whatever its own one is, so this grid gets it.
inline constexpr int kHoursGridId = kGridMouseMoveId;

class HoursGrid {
 public:
  // Creates the window as a child of the dialog, with the hours as headings and all days still
  // empty.
  void Create(HWND dialog);

  // Rows count from 1.
  void SetDayName(int row, const std::wstring& name);
  // Shows an hour as blocked or allowed. The column of hour 0 is 1.
  void ShowHour(GridCell cell, bool blocked);
  // Repaints immediately.
  void Refresh();

 private:
  void ApplySettings();
  void SetHeadings();
  void SetHourHeading(int col);
  void SetText(GridCell cell, const std::wstring& text);
  void Send(UINT message, WPARAM wParam, LPARAM lParam = 0);
  void SendCell(UINT message, GridCell cell, LPARAM lParam);

  // The window draws with this font but does not own it. The font is destroyed with the editor,
  // after the dialog.
  FontHandle headingFont_;
  HWND window_ = nullptr;
};

}  // namespace quillgate
