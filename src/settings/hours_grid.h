// The grid of the hours editor: below a row of hour headings one row for each day of the week, with
// a cell for each hour, green where connecting is allowed and red where it is blocked. Owned by the
// editor; used on the service main thread while the editor's dialog is open. Without a window, for
// the system may refuse it, everything here does nothing.
#pragma once

#include <windows.h>

#include <string>

#include "grid/grid_notifications.h"
#include "grid/grid_types.h"
#include "handles/gdi_handles.h"

namespace quillgate {

// The identifier that a grid tells the pointer's moves with is the one it must have, then.
inline constexpr int kHoursGridId = kGridMouseMoveId;

class HoursGrid {
 public:
  // Makes the window inside the dialog, with the hours as headings and all days still empty.
  void Create(HWND dialog);

  // Rows count from 1.
  void SetDayName(int row, const std::wstring& name);
  // The cell of an hour is in the hour's column, which count from 1.
  void ShowHour(GridCell cell, bool blocked);
  // Paints at once.
  void Refresh();

 private:
  void SetLooks();
  void SetHeadings();
  void SetHourHeading(int col);
  void SetText(GridCell cell, const std::wstring& text);
  void Send(UINT message, WPARAM wParam, LPARAM lParam = 0);
  void SendCell(UINT message, GridCell cell, LPARAM lParam);

  // The window draws with it, but does not own it: it ends after the dialog, with the editor.
  FontHandle headingFont_;
  HWND window_ = nullptr;
};

}  // namespace quillgate
