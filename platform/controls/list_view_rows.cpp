// The rows of a list view: inserted, read, changed, deleted and sorted.
#include <utility>

#include "platform/controls/list_view.h"

namespace platform {

UINT ListView::State(int row) const {
  return items_.HasRow(row) ? states_.Of(row) | items_.Row(row).stateImage : 0;
}

LRESULT ListView::InsertItem(const LVITEMW* given) {
  if (given == nullptr || given->iSubItem != 0 || given->iItem < 0) return -1;
  if ((given->mask & LVIF_TEXT) != 0 && IsTextCallback(given->pszText)) {
    return Refuse("list view: texts of callbacks", LVM_INSERTITEMW, -1);
  }
  ListViewItems::Item item;
  if ((given->mask & LVIF_TEXT) != 0 && given->pszText != nullptr) item.texts = {given->pszText};
  if ((given->mask & LVIF_PARAM) != 0) item.data = given->lParam;
  const int row = items_.InsertRow(given->iItem, std::move(item));
  states_.InsertRow(row);
  if (Peer() != nullptr) Peer()->RowInserted(row);
  NMLISTVIEW notification = NotificationOf(row);
  Notify(LVN_INSERTITEM, notification);
  if (!Self().IsLive()) return row;
  if (HasCheckBoxes()) ChangeOwnState(row, kUnchecked, LVIS_STATEIMAGEMASK);
  if ((given->mask & LVIF_STATE) != 0) {
    ChangeState(row, given->state, given->stateMask & ~LVIS_STATEIMAGEMASK);
  }
  return row;
}

LRESULT ListView::SetItem(const LVITEMW* given) {
  if (given == nullptr || !HasRow(given->iItem)) return FALSE;
  const int row = given->iItem;
  // Data and state belong to the row, not to a subitem.
  if (given->iSubItem != 0 && (given->mask & (LVIF_PARAM | LVIF_STATE)) != 0) return FALSE;
  if ((given->mask & LVIF_PARAM) != 0) items_.Row(row).data = given->lParam;
  if ((given->mask & LVIF_TEXT) != 0 && !SetItemText(row, given)) return FALSE;
  if ((given->mask & LVIF_STATE) != 0) SetItemState(row, given);
  return TRUE;
}

LRESULT ListView::GetItem(LVITEMW* result) const {
  if (result == nullptr || !HasRow(result->iItem)) return FALSE;
  const int row = result->iItem;
  if ((result->mask & LVIF_TEXT) != 0) GetItemText(row, result);
  if ((result->mask & LVIF_PARAM) != 0) result->lParam = items_.Row(row).data;
  if ((result->mask & LVIF_STATE) != 0) result->state = State(row) & result->stateMask;
  return TRUE;
}

bool ListView::SetItemText(int row, const LVITEMW* given) {
  if (given == nullptr || !HasRow(row) || IsTextCallback(given->pszText)) return false;
  if (given->iSubItem != 0 && !items_.HasColumn(given->iSubItem)) return false;
  items_.SetText(row, given->iSubItem, given->pszText != nullptr ? given->pszText : L"");
  if (Peer() != nullptr) Peer()->RowsChanged();
  NMLISTVIEW notification = NotificationOf(row);
  notification.iSubItem = given->iSubItem;
  notification.uChanged = LVIF_TEXT;
  Notify(LVN_ITEMCHANGED, notification);
  return true;
}

LRESULT ListView::GetItemText(int row, LVITEMW* result) const {
  if (result == nullptr) return 0;
  return CopyBounded(Text(row, result->iSubItem), result->pszText, result->cchTextMax);
}

LRESULT ListView::DeleteItem(int row) {
  if (!HasRow(row)) return FALSE;
  NMLISTVIEW notification = NotificationOf(row);
  Notify(LVN_DELETEITEM, notification);
  if (!Self().IsLive() || !HasRow(row)) return FALSE;
  items_.RemoveRow(row);
  states_.RemoveRow(row);
  if (Peer() != nullptr) Peer()->RowRemoved(row);
  return TRUE;
}

LRESULT ListView::DeleteAllItems() {
  NMLISTVIEW notification{};
  notification.iItem = -1;
  const bool notifyEach = Notify(LVN_DELETEALLITEMS, notification) == FALSE;
  for (int row = 0; notifyEach && Self().IsLive() && row < RowCount(); ++row) {
    notification = NotificationOf(row);
    Notify(LVN_DELETEITEM, notification);
  }
  if (!Self().IsLive()) return FALSE;
  items_.Clear();
  states_ = {};
  if (Peer() != nullptr) Peer()->RowCountChanged();
  return TRUE;
}

LRESULT ListView::Sort(LPARAM parameter, PFNLVCOMPARE compare) {
  if (compare == nullptr) return FALSE;
  states_ = states_.Reordered(items_.Sort(compare, parameter));
  if (Peer() != nullptr) {
    Peer()->RowsChanged();
    Peer()->StatesChanged();
  }
  return TRUE;
}

LRESULT ListView::EnsureVisible(int row) {
  if (!HasRow(row)) return FALSE;
  if (Peer() != nullptr) Peer()->EnsureVisible(row);
  return TRUE;
}

NMLISTVIEW ListView::NotificationOf(int row) const {
  NMLISTVIEW notification{};
  notification.iItem = row;
  if (items_.HasRow(row)) notification.lParam = items_.Row(row).data;
  return notification;
}

}  // namespace platform
