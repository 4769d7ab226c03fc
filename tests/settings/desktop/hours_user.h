// The person before the editor of connection hours: a script's hands on its grid, by cells. All
// calls are made by the script.
#pragma once

#include "desktop/dialog_driver.h"
#include "grid/grid_types.h"

namespace quillgate {

class HoursUser {
 public:
  // Waits for the editor. Its title is empty where there are no texts.
  explicit HoursUser(DesktopScript& script, const QString& title = "Connection hours");

  DesktopScript& Script() { return script_; }
  QWidget* Window() const { return window_; }
  QWidget* Grid() const { return grid_; }

  // The left button where the pointer is.
  void Press();
  void Release();
  // Into the cell, its middle or so many pixels right of it; returns when the editor has heard.
  void MoveTo(GridCell cell, int offset = 0);
  void Click(GridCell cell);
  void DoubleClick(GridCell cell);

  bool IsBlocked(GridCell cell);
  QString TextOf(GridCell cell);
  // Until the cell is painted in that colour, between its frame and its middle.
  void AwaitColour(GridCell cell, const QColor& colour);

 private:
  void AwaitHeard();

  DesktopScript& script_;
  QWidget* window_;
  QWidget* grid_;
  QPoint pointer_;  // in the window
};

}  // namespace quillgate
