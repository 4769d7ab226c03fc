// A list view in report mode: rows under column headings.
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
  // A check box before each row, which notifies with LVN_ITEMCHANGED.
  void AddCheckBoxes() const { Extend(LVS_EX_CHECKBOXES); }

  // Appends a column. The width is in pixels.
  void AddColumn(const std::wstring& heading, int width) const;
  void SetHeading(int column, const std::wstring& heading) const;
  // Fits the width of a column to its texts and heading; the last column takes the rest of the
  // width.
  void FitColumn(int column) const {
    ListView_SetColumnWidth(Window(), column, LVSCW_AUTOSIZE_USEHEADER);
  }

  // Removes the rows; the columns stay.
  void Clear() const { ListView_DeleteAllItems(Window()); }
  int Count() const { return ListView_GetItemCount(Window()); }
  // Appends a row with the text of its first column, and a number that Sort passes to the
  // comparison. Returns the index of the row, negative when it could not be added.
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

  // Whether the notification reports a check box that was checked or unchecked.
  static bool IsCheckChange(const NMHDR& header);

  // Compares the numbers of two rows: negative, zero or positive. Must not throw.
  using Comparison = std::function<int(LPARAM first, LPARAM second)>;
  // The rows keep their cells, checks and selection.
  void Sort(const Comparison& compare) const;

 private:
  void Extend(DWORD style) const { ListView_SetExtendedListViewStyleEx(Window(), style, style); }
};

}  // namespace quillgate
