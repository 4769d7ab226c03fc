// The widget of a list view, which shows the rows that the control holds. For the window thread.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/controls/row_ranges.h"
#include "platform/user/window_peer.h"

namespace platform {

struct ListViewColumn {
  std::wstring title;
  int width = 0;   // pixels
  int format = 0;  // LVCFMT_LEFT, LVCFMT_RIGHT or LVCFMT_CENTER
};

// The content to show, which alone holds focus and selection. The texts and states of a row that
// does not exist are empty.
class ListViewContent {
 public:
  virtual ~ListViewContent() = default;

  virtual int RowCount() const = 0;
  virtual const std::vector<ListViewColumn>& Columns() const = 0;
  virtual std::wstring Text(int row, int column) const = 0;
  // LVIS_ bits.
  virtual UINT State(int row) const = 0;
  virtual const RowRanges& SelectedRows() const = 0;
  // Below zero: none.
  virtual int FocusedRow() const = 0;
};

// Called inside an event of the desktop.
class ListViewEvents {
 public:
  virtual ~ListViewEvents() = default;

  // What the user has selected, all rows together.
  virtual void OnSelected(const RowRanges& rows) = 0;
  // Below zero: no row has the focus.
  virtual void OnFocusMoved(int row) = 0;
  // The user clicked the check box of the row; it still shows the old state.
  virtual void OnCheckClicked(int row) = 0;
  virtual void OnHeaderClicked(int column) = 0;
  virtual void OnHeaderResized(int column, int width) = 0;
  virtual void OnRowClicked(int row, int column, bool twice) = 0;
};

class ListViewPeer : public WindowPeer {
 public:
  // Called after the content has changed. Texts and states are asked for when they are painted.
  virtual void ColumnInserted() = 0;
  virtual void ColumnChanged(int column) = 0;
  virtual void RowInserted(int row) = 0;
  virtual void RowRemoved(int row) = 0;
  // Rows were added or removed at the end.
  virtual void RowCountChanged() = 0;
  virtual void RowsChanged() = 0;
  // Focus or selection.
  virtual void StatesChanged() = 0;

  virtual void EnsureVisible(int row) = 0;
  // Of the row in all columns, in client coordinates; outside of the client area when it is not in
  // view. Nothing without columns.
  virtual std::optional<RECT> BoundsOf(int row) const = 0;
  // None when the last one is below the first.
  virtual RowRange RowsInView() const = 0;
  // LVS_EX_ bits.
  virtual void SetExtendedStyle(DWORD style) = 0;
  // Widths in pixels: of a column in which the text is not cut, in a row and in the header; and of
  // the area that all columns share without scrolling.
  virtual int RowWidthFor(const std::wstring& text, bool withCheckBox) const = 0;
  virtual int HeaderWidthFor(const std::wstring& text) const = 0;
  virtual int ClientWidth() const = 0;
};

}  // namespace platform
