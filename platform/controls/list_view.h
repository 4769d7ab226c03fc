// "SysListView32" in report view: columns, rows, selection, check boxes, and the notifications to
// the parent. With LVS_OWNERDATA the program holds the rows: the list knows how many there are and
// asks for a text when it is painted or measured. Owned by its window, on the window thread.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <optional>
#include <vector>

#include "platform/controls/basic_control.h"
#include "platform/controls/list_view_items.h"
#include "platform/controls/row_states.h"

namespace platform {

class ListView final : public BasicControl, private ListViewContent, private ListViewEvents {
 public:
  explicit ListView(Window& window) : BasicControl(window) {}

  std::unique_ptr<WindowPeer> MakePeer(Window& window, WindowPeer* parent) override;
  std::optional<LRESULT> Answer(UINT message, WPARAM wParam, LPARAM lParam) override;
  bool TakesKeyMessages() const override { return true; }

 private:
  int RowCount() const override { return IsOwnerData() ? ownerRows_ : items_.RowCount(); }
  const std::vector<ListViewColumn>& Columns() const override { return items_.Columns(); }
  std::wstring Text(int row, int column) const override;
  UINT State(int row) const override;
  const RowRanges& SelectedRows() const override { return states_.selected; }
  int FocusedRow() const override { return states_.focused; }

  void OnSelected(const RowRanges& rows) override;
  void OnFocusMoved(int row) override;
  void OnCheckClicked(int row) override;
  void OnHeaderClicked(int column) override;
  void OnHeaderResized(int column, int width) override;
  void OnRowClicked(int row, int column, bool twice) override;

  ListViewPeer* Peer() const { return static_cast<ListViewPeer*>(Self().Peer()); }
  bool IsOwnerData() const { return (Self().Style() & LVS_OWNERDATA) != 0; }
  bool HasRow(int row) const { return row >= 0 && row < RowCount(); }
  bool HasCheckBoxes() const { return (extendedStyle_ & LVS_EX_CHECKBOXES) != 0; }
  bool IsSingleSelection() const { return (Self().Style() & LVS_SINGLESEL) != 0; }
  std::optional<LRESULT> AnswerColumns(UINT message, int column, LPARAM lParam);
  std::optional<LRESULT> AnswerRows(UINT message, int row, LPARAM lParam);
  LRESULT AnswerStates(UINT message, int row, LPARAM lParam);

  // list_view.cpp
  void NotifyKey(WPARAM virtualKey) const;
  LRESULT InsertColumn(int column, const LVCOLUMNW* given);
  LRESULT SetColumn(int column, const LVCOLUMNW* given);
  LRESULT GetColumn(int column, LVCOLUMNW* result) const;
  void TakeColumn(int column, const LVCOLUMNW& given);
  LRESULT SetColumnWidth(int column, int width);
  // The width in pixels for LVSCW_AUTOSIZE or LVSCW_AUTOSIZE_USEHEADER.
  int FittingWidth(int column, bool useHeader) const;

  // list_view_rows.cpp
  std::wstring AskForText(int row, int column) const;
  LRESULT SetItemCount(WPARAM count, LPARAM flags);
  LRESULT InsertItem(const LVITEMW* given);
  LRESULT SetItem(const LVITEMW* given);
  LRESULT GetItem(LVITEMW* result) const;
  bool SetItemText(int row, const LVITEMW* given);
  LRESULT GetItemText(int row, LVITEMW* result) const;
  LRESULT DeleteItem(int row);
  LRESULT DeleteAllItems();
  LRESULT Sort(LPARAM parameter, PFNLVCOMPARE compare);
  LRESULT EnsureVisible(int row);
  LRESULT GetItemRect(int row, RECT* bounds) const;
  LRESULT RedrawItems();

  // list_view_states.cpp
  LRESULT NextItem(int after, UINT flags) const;
  LRESULT SetItemState(int row, const LVITEMW* given);
  LRESULT SetExtendedStyle(DWORD mask, DWORD style);
  // Sets the bits in the mask to those of the state, and adjusts the other rows: only one row has
  // the focus and, with LVS_SINGLESEL, only one is selected. Notifies each change at once.
  void ChangeState(int row, UINT state, UINT mask);
  void ChangeOwnState(int row, UINT state, UINT mask);
  // The same for all rows; FALSE when they cannot have that state.
  LRESULT ChangeAllStates(UINT state, UINT mask);
  void ChangeStateImages(UINT image);

  // What the user did to focus and selection is notified as deferred work: what it comes to by
  // then. A message that changes rows or states calls NotifyUserChanges first.
  void NoteUserChange();
  void NotifyUserChanges();
  // Notifies what has changed since.
  void NotifyChangesSince(const RowStates& before);
  void NotifySelection(const RowRanges& rows, bool selected);
  // With LVS_OWNERDATA a range is notified as one change, and all rows as that of row -1.
  void NotifyOwner(const RowRanges& rows, bool selected);
  void NotifyState(int row, UINT before, UINT after);
  NMLISTVIEW NotificationOf(int row) const;
  NMLISTVIEW StateNotification(int row, UINT before, UINT after) const;

  // With LVS_OWNERDATA only the columns.
  ListViewItems items_;
  int ownerRows_ = 0;
  RowStates states_;
  DWORD extendedStyle_ = 0;
  // The states before what the user did that is not notified yet.
  std::optional<RowStates> unsent_;
};

}  // namespace platform
