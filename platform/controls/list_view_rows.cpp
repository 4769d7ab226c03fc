// The rows of a list view: inserted, read, changed, deleted and sorted.
#include <iterator>
#include <utility>

#include "platform/controls/list_view.h"

namespace platform {
namespace {

constexpr WPARAM kMostRows = 100'000'000;  // as documented
constexpr LPARAM kCountFlags = LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL;

}  // namespace

std::wstring ListView::Text(int row, int column) const {
  return IsOwnerData() && HasRow(row) ? AskForText(row, column) : items_.Text(row, column);
}

UINT ListView::State(int row) const {
  return items_.HasRow(row) ? states_.Of(row) | items_.Row(row).stateImage : states_.Of(row);
}

// The program fills the buffer, or points to a text of its own.
std::wstring ListView::AskForText(int row, int column) const {
  wchar_t buffer[260] = L"";  // the size that programs know
  NMLVDISPINFOW question{};
  question.item.mask = LVIF_TEXT;
  question.item.iItem = row;
  question.item.iSubItem = column;
  question.item.pszText = buffer;
  question.item.cchTextMax = static_cast<int>(std::size(buffer));
  Notify(LVN_GETDISPINFOW, question);
  buffer[std::size(buffer) - 1] = L'\0';
  const wchar_t* text = question.item.pszText;
  return text != nullptr && !IsTextCallback(text) ? text : L"";
}

// The scroll position stays with both flags and without; a row past the end loses its states.
LRESULT ListView::SetItemCount(WPARAM count, LPARAM flags) {
  if (!IsOwnerData()) return Refuse("list view: space for rows", LVM_SETITEMCOUNT, FALSE);
  if (count > kMostRows || (flags & ~kCountFlags) != 0) return FALSE;
  ownerRows_ = static_cast<int>(count);
  states_.Truncate(ownerRows_);
  if (Peer() != nullptr) Peer()->RowCountChanged();
  return TRUE;
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
  if (IsOwnerData() && (given->mask & (LVIF_PARAM | LVIF_TEXT)) != 0) {
    return Refuse("list view: rows of the program", LVM_SETITEMW, FALSE);
  }
  if ((given->mask & LVIF_PARAM) != 0) items_.Row(row).data = given->lParam;
  if ((given->mask & LVIF_TEXT) != 0 && !SetItemText(row, given)) return FALSE;
  if ((given->mask & LVIF_STATE) != 0) SetItemState(row, given);
  return TRUE;
}

LRESULT ListView::GetItem(LVITEMW* result) const {
  if (result == nullptr || !HasRow(result->iItem)) return FALSE;
  const int row = result->iItem;
  if ((result->mask & LVIF_TEXT) != 0) GetItemText(row, result);
  if ((result->mask & LVIF_PARAM) != 0) result->lParam = NotificationOf(row).lParam;
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
  const bool notifyEach = Notify(LVN_DELETEALLITEMS, notification) == FALSE && !IsOwnerData();
  for (int row = 0; notifyEach && Self().IsLive() && row < RowCount(); ++row) {
    notification = NotificationOf(row);
    Notify(LVN_DELETEITEM, notification);
  }
  if (!Self().IsLive()) return FALSE;
  items_.Clear();
  ownerRows_ = 0;
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

// The left edge holds the part of the row that is asked for.
LRESULT ListView::GetItemRect(int row, RECT* bounds) const {
  if (bounds == nullptr || !HasRow(row) || Peer() == nullptr) return FALSE;
  if (bounds->left != LVIR_BOUNDS) return Refuse("list view: parts", LVM_GETITEMRECT, FALSE);
  const auto found = Peer()->BoundsOf(row);
  *bounds = found.value_or(RECT{});
  return found.has_value() ? TRUE : FALSE;
}

// Only rows in view are painted, so their numbers do not matter.
LRESULT ListView::RedrawItems() {
  if (Peer() != nullptr) Peer()->RowsChanged();
  return TRUE;
}

NMLISTVIEW ListView::NotificationOf(int row) const {
  NMLISTVIEW notification{};
  notification.iItem = row;
  if (items_.HasRow(row)) notification.lParam = items_.Row(row).data;
  return notification;
}

}  // namespace platform
