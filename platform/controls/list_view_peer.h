// The widget of a list view, which shows the rows that the control holds. For the window thread.
#pragma once

#include <string>
#include <vector>

#include "platform/user/window_peer.h"

namespace platform {

struct ListViewColumn {
  std::wstring title;
  int width = 0;   // pixels
  int format = 0;  // LVCFMT_LEFT, LVCFMT_RIGHT or LVCFMT_CENTER
};

// The content to show. The texts and states of a row that does not exist are empty.
class ListViewContent {
 public:
  virtual ~ListViewContent() = default;

  virtual int RowCount() const = 0;
  virtual const std::vector<ListViewColumn>& Columns() const = 0;
  virtual std::wstring Text(int row, int column) const = 0;
  // LVIS_ bits.
  virtual UINT State(int row) const = 0;
};

// Called inside an event of the desktop.
class ListViewEvents {
 public:
  virtual ~ListViewEvents() = default;

  // The rows that the user has selected, in ascending order, and the row with the focus (below
  // zero: none).
  virtual void OnSelected(const std::vector<int>& rows, int focused) = 0;
  // The user clicked the check box of the row; it still shows the old state.
  virtual void OnCheckClicked(int row) = 0;
  virtual void OnHeaderClicked(int column) = 0;
  virtual void OnHeaderResized(int column, int width) = 0;
  virtual void OnRowClicked(int row, int column, bool twice) = 0;
};

class ListViewPeer : public WindowPeer {
 public:
  // Called after the content has changed.
  virtual void ColumnsChanged() = 0;
  virtual void RowInserted(int row) = 0;
  virtual void RowRemoved(int row) = 0;
  virtual void RowChanged(int row) = 0;
  virtual void RowsReplaced() = 0;

  virtual void EnsureVisible(int row) = 0;
  // LVS_EX_ bits.
  virtual void SetExtendedStyle(DWORD style) = 0;
  // Widths in pixels: of a column in which the text is not cut, in a row and in the header; and of
  // the area that all columns share without scrolling.
  virtual int RowWidthFor(const std::wstring& text, bool withCheckBox) const = 0;
  virtual int HeaderWidthFor(const std::wstring& text) const = 0;
  virtual int ClientWidth() const = 0;
};

}  // namespace platform
