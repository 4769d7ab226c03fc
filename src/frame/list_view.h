// A list view in report mode: rows under column headings. A list with LVS_OWNERDATA shows rows that
// the program holds: it is told their number, and asks with LVN_GETDISPINFOW for each text when it
// is shown.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <functional>
#include <optional>

#include "frame/control.h"

namespace quillgate {

class ListView : public Control {
 public:
  using Control::Control;

  void SelectWholeRows() const { Extend(LVS_EX_FULLROWSELECT); }
  // A check box before each row, which notifies with LVN_ITEMCHANGED.
  void AddCheckBoxes() const { Extend(LVS_EX_CHECKBOXES); }

  // Appends a column. The width is in pixels, the alignment one of LVCFMT_; the first column is
  // always aligned to the left.
  void AddColumn(const std::wstring& heading, int width, int alignment = LVCFMT_LEFT) const;
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

  // The number of rows that the program holds. Those past the end lose selection and focus.
  void SetRowCount(int count) const;
  // Shows all rows again: their texts have changed.
  void Redraw() const;
  // Answers LVN_GETDISPINFOW with the text of a row and a column, cut to the space that there is.
  using TextOfCell = std::function<std::wstring(int row, int column)>;
  static void AnswerTextRequest(const NMHDR& header, const TextOfCell& textOf);

  bool IsSelected(int row) const {
    return ListView_GetItemState(Window(), row, LVIS_SELECTED) != 0;
  }
  // Selects a row and scrolls to it; notifies as when the user does. A negative row is ignored.
  void SelectAndShow(int row) const;
  // The row that the notification reports as selected; nullopt for any other notification.
  static std::optional<int> SelectedBy(const NMHDR& header);
  void Select(int row, bool selected) const;
  void SelectAll(bool selected) const { Select(kAllRows, selected); }
  // The first selected row after that one (-1: of all); -1 when there is none.
  int NextSelected(int after) const { return Next(after, LVNI_SELECTED); }
  // The row with the focus; -1 when there is none.
  int FocusedRow() const { return Next(-1, LVNI_FOCUSED); }

  // In the list's client area, or outside of it when the row is not in view. Empty for a row that
  // does not exist.
  RECT RowBounds(int row) const;
  // Where on the screen to show the menu that WM_CONTEXTMENU asks for: at the mouse, or by the
  // focused row when the keyboard asked.
  POINT MenuPosition(LPARAM position) const;

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
  static constexpr int kAllRows = -1;

  int Next(int after, UINT flags) const;
  void Extend(DWORD style) const { ListView_SetExtendedListViewStyleEx(Window(), style, style); }
};

}  // namespace quillgate
