// A list of rows under headed columns.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <functional>

#include "frame/control.h"

namespace quillgate {

class ListView : public Control {
 public:
  using Control::Control;

  void SelectWholeRows() const { Extend(LVS_EX_FULLROWSELECT); }
  // A box before each row, which notifies by LVN_ITEMCHANGED.
  void AddCheckBoxes() const { Extend(LVS_EX_CHECKBOXES); }

  // Appends a column, its width in pixels.
  void AddColumn(const std::wstring& heading, int width) const;
  void SetHeading(int column, const std::wstring& heading) const;
  // Makes a column as wide as its texts need; the last one takes all that the others leave.
  void FitColumn(int column) const {
    ListView_SetColumnWidth(Window(), column, LVSCW_AUTOSIZE_USEHEADER);
  }

  // Removes the rows; the columns stay.
  void Clear() const { ListView_DeleteAllItems(Window()); }
  int Count() const { return ListView_GetItemCount(Window()); }
  // Appends a row with the text of its first column, and a number by which Sort knows it. Its
  // index, negative when it cannot be added.
  int AddRow(const std::wstring& text, LPARAM data = 0) const;
  void SetCell(int row, int column, const std::wstring& text) const;
  // At most 255 characters.
  std::wstring Cell(int row, int column) const;
  bool IsSelected(int row) const {
    return ListView_GetItemState(Window(), row, LVIS_SELECTED) != 0;
  }

  void Check(int row, bool checked) const {
    ListView_SetCheckState(Window(), row, checked ? TRUE : FALSE);
  }
  bool IsChecked(int row) const { return ListView_GetCheckState(Window(), row) == TRUE; }

  // Whether a notification that has been received is that of a box that was checked or unchecked.
  static bool IsCheckChange(const NMHDR& header);

  // Negative, zero or positive, for the numbers of two rows. Must not throw.
  using Comparison = std::function<int(LPARAM first, LPARAM second)>;
  // The rows keep their cells, checks and selection.
  void Sort(const Comparison& compare) const;

 private:
  void Extend(DWORD style) const { ListView_SetExtendedListViewStyleEx(Window(), style, style); }
};

}  // namespace quillgate
