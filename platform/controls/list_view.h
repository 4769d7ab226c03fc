// "SysListView32" in report view: columns, rows, selection, check boxes, and the notifications to
// the parent. Owned by its window, on the window thread.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <optional>
#include <vector>

#include "platform/controls/basic_control.h"
#include "platform/controls/list_view_items.h"

namespace platform {

class ListView final : public BasicControl, private ListViewEvents {
 public:
  explicit ListView(Window& window) : BasicControl(window) {}

  std::unique_ptr<WindowPeer> MakePeer(Window& window, WindowPeer* parent) override;
  std::optional<LRESULT> Answer(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  // When the parent is notified of a change: at once if a message made the change, as deferred work
  // if the user did.
  enum class When { kNow, kLater };

  void OnSelected(const std::vector<int>& rows, int focused) override;
  void OnCheckClicked(int row) override;
  void OnHeaderClicked(int column) override;
  void OnHeaderResized(int column, int width) override;
  void OnRowClicked(int row, int column, bool twice) override;

  ListViewPeer* Peer() const { return static_cast<ListViewPeer*>(Self().Peer()); }
  std::optional<LRESULT> AnswerColumns(UINT message, int column, LPARAM lParam);
  std::optional<LRESULT> AnswerRows(UINT message, int row, LPARAM lParam);
  LRESULT AnswerStates(UINT message, int row, LPARAM lParam);

  LRESULT InsertColumn(int column, const LVCOLUMNW* given);
  LRESULT SetColumn(int column, const LVCOLUMNW* given);
  LRESULT GetColumn(int column, LVCOLUMNW* result) const;
  void TakeColumn(int column, const LVCOLUMNW& given);
  LRESULT SetColumnWidth(int column, int width);
  // The width in pixels for LVSCW_AUTOSIZE or LVSCW_AUTOSIZE_USEHEADER.
  int FittingWidth(int column, bool useHeader) const;

  LRESULT InsertItem(const LVITEMW* given);
  LRESULT SetItem(const LVITEMW* given);
  LRESULT GetItem(LVITEMW* result) const;
  bool SetItemText(int row, const LVITEMW* given);
  LRESULT GetItemText(int row, LVITEMW* result) const;
  LRESULT DeleteItem(int row);
  LRESULT DeleteAllItems();
  LRESULT Sort(LPARAM parameter, PFNLVCOMPARE compare);
  LRESULT NextItem(int after, UINT flags) const;
  LRESULT EnsureVisible(int row);

  LRESULT SetItemState(int row, const LVITEMW* given);
  // Sets the bits in the mask to those of the state, and adjusts the other rows: only one row has
  // the focus and, with LVS_SINGLESEL, only one is selected.
  void ChangeState(int row, UINT state, UINT mask, When when);
  void ChangeOwnState(int row, UINT state, UINT mask, When when);
  void NotifyChangeLater(const NMLISTVIEW& change);
  void NotifyChanges();
  LRESULT SetExtendedStyle(DWORD mask, DWORD style);

  NMLISTVIEW NotificationOf(int row) const;

  ListViewItems items_;
  DWORD extendedStyle_ = 0;
  // Pending LVN_ITEMCHANGED notifications of what the user did.
  std::vector<NMLISTVIEW> unsent_;
};

}  // namespace platform
