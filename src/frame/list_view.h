// A list of rows under headed columns.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include "frame/control.h"

namespace quillgate {

class ListView : public Control {
 public:
  using Control::Control;

  void SelectWholeRows() const { Send(LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT); }

  // Appends a column, its width in pixels.
  void AddColumn(const std::wstring& heading, int width) const;
  void SetHeading(int column, const std::wstring& heading) const;
  // Makes a column as wide as its texts need; the last one takes all that the others leave.
  void FitColumn(int column) const {
    Send(LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(column), LVSCW_AUTOSIZE_USEHEADER);
  }

  // Removes the rows; the columns stay.
  void Clear() const { Send(LVM_DELETEALLITEMS); }
  // Appends a row with the text of its first column. Its index, negative when it cannot be added.
  int AddRow(const std::wstring& text) const;
  void SetCell(int row, int column, const std::wstring& text) const;
};

}  // namespace quillgate
