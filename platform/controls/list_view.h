// "SysListView32" in report view: the messages of its columns, rows, selection and check boxes, and
// what it tells its parent. Owned by its window, on the window thread.
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
  // Whether the parent hears of a change at once (a message made it) or later (the user did).
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
  LRESULT GetColumn(int column, LVCOLUMNW* asked) const;
  void TakeColumn(int column, const LVCOLUMNW& given);
  LRESULT SetColumnWidth(int column, int width);
  // What LVSCW_AUTOSIZE or LVSCW_AUTOSIZE_USEHEADER stands for.
  int FittingWidth(int column, bool useHeader) const;

  LRESULT InsertItem(const LVITEMW* given);
  LRESULT SetItem(const LVITEMW* given);
  LRESULT GetItem(LVITEMW* asked) const;
  bool SetItemText(int row, const LVITEMW* given);
  LRESULT GetItemText(int row, LVITEMW* asked) const;
  LRESULT DeleteItem(int row);
  LRESULT DeleteAllItems();
  LRESULT Sort(LPARAM parameter, PFNLVCOMPARE compare);
  LRESULT NextItem(int after, UINT flags) const;
  LRESULT EnsureVisible(int row);

  LRESULT SetItemState(int row, const LVITEMW* given);
  // Brings the bits of the mask into that state, and the other rows in line with it: there is one
  // focus and, with LVS_SINGLESEL, one selected row.
  void ChangeState(int row, UINT state, UINT mask, When when);
  void ChangeOwnState(int row, UINT state, UINT mask, When when);
  void NotifyChangeLater(const NMLISTVIEW& change);
  void NotifyChanges();
  LRESULT SetExtendedStyle(DWORD mask, DWORD style);

  NMLISTVIEW NotificationOf(int row) const;

  ListViewItems items_;
  DWORD extendedStyle_ = 0;
  // LVN_ITEMCHANGED of what the user did.
  std::vector<NMLISTVIEW> unsent_;
};

}  // namespace platform
