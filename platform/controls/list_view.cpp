#include "platform/controls/list_view.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "platform/controls/control_peers.h"
#include "platform/kernel/log.h"
#include "platform/user/desktop.h"

namespace platform {
namespace {

constexpr DWORD kStyles = LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_ALIGNLEFT |
                          LVS_NOCOLUMNHEADER | LVS_NOSORTHEADER;
constexpr DWORD kOwnStyles = 0xFFFF;  // the low word is the class's own
constexpr DWORD kExtendedStyles = LVS_EX_GRIDLINES | LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT;
constexpr UINT kStates = LVIS_FOCUSED | LVIS_SELECTED | LVIS_STATEIMAGEMASK;
constexpr UINT kUnchecked = INDEXTOSTATEIMAGEMASK(1);
constexpr UINT kChecked = INDEXTOSTATEIMAGEMASK(2);
constexpr UINT kLastMessage = LVM_FIRST + 255;
constexpr int kDefaultColumnWidth = 10;  // pixels, as documented

bool IsSupported(DWORD style) {
  return (style & LVS_TYPEMASK) == LVS_REPORT && (style & kOwnStyles & ~kStyles) == 0;
}

// Whether the text is LPSTR_TEXTCALLBACK, which is not supported.
bool IsCallback(const wchar_t* text) {
  return reinterpret_cast<LONG_PTR>(text) == -1;
}

UINT ChangedBits(const NMLISTVIEW& change) {
  return change.uNewState ^ change.uOldState;
}

// Whether the changes are those of the focus and of the selection of one row.
bool AreOneMove(const NMLISTVIEW& first, const NMLISTVIEW& second) {
  const UINT both = ChangedBits(first) ^ ChangedBits(second);
  return first.iItem == second.iItem && both == (LVIS_FOCUSED | LVIS_SELECTED);
}

bool HasText(const wchar_t* text) {
  return text != nullptr && !IsCallback(text);
}

}  // namespace

std::unique_ptr<WindowPeer> ListView::MakePeer(Window& /*window*/, WindowPeer* parent) {
  return DesktopSide<ControlSide>().Controls().MakeListView(Origin(parent), items_, *this);
}

std::optional<LRESULT> ListView::Answer(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE && !IsSupported(Self().Style())) {
    LogLine("list view: report view only, and not with these styles");
    return FALSE;
  }
  if (message == WM_GETDLGCODE) return DLGC_WANTARROWS | DLGC_WANTCHARS;
  if (message < LVM_FIRST || message > kLastMessage) return std::nullopt;
  if (message == LVM_SORTITEMS) {
    return Sort(static_cast<LPARAM>(wParam), reinterpret_cast<PFNLVCOMPARE>(lParam));
  }
  const int index = static_cast<int>(wParam);
  if (const auto answer = AnswerColumns(message, index, lParam)) return answer;
  if (const auto answer = AnswerRows(message, index, lParam)) return answer;
  return AnswerStates(message, index, lParam);
}

std::optional<LRESULT> ListView::AnswerColumns(UINT message, int column, LPARAM lParam) {
  switch (message) {
    case LVM_INSERTCOLUMNW:
      return InsertColumn(column, reinterpret_cast<const LVCOLUMNW*>(lParam));
    case LVM_SETCOLUMNW:
      return SetColumn(column, reinterpret_cast<const LVCOLUMNW*>(lParam));
    case LVM_GETCOLUMNW:
      return GetColumn(column, reinterpret_cast<LVCOLUMNW*>(lParam));
    case LVM_GETCOLUMNWIDTH:
      return items_.HasColumn(column) ? items_.Column(column).width : 0;
    case LVM_SETCOLUMNWIDTH:
      return SetColumnWidth(column, static_cast<SHORT>(LOWORD(lParam)));
    default:
      return std::nullopt;
  }
}

std::optional<LRESULT> ListView::AnswerRows(UINT message, int row, LPARAM lParam) {
  auto* item = reinterpret_cast<LVITEMW*>(lParam);
  switch (message) {
    case LVM_INSERTITEMW:
      return InsertItem(item);
    case LVM_SETITEMW:
      return SetItem(item);
    case LVM_GETITEMW:
      return GetItem(item);
    case LVM_SETITEMTEXTW:
      return SetItemText(row, item) ? TRUE : FALSE;
    case LVM_GETITEMTEXTW:
      return GetItemText(row, item);
    case LVM_DELETEITEM:
      return DeleteItem(row);
    case LVM_DELETEALLITEMS:
      return DeleteAllItems();
    case LVM_GETITEMCOUNT:
      return items_.RowCount();
    case LVM_ENSUREVISIBLE:
      return EnsureVisible(row);
    default:
      return std::nullopt;
  }
}

LRESULT ListView::AnswerStates(UINT message, int row, LPARAM lParam) {
  switch (message) {
    case LVM_GETNEXTITEM:
      return NextItem(row, LOWORD(lParam));
    case LVM_SETITEMSTATE:
      return SetItemState(row, reinterpret_cast<const LVITEMW*>(lParam));
    case LVM_GETITEMSTATE:
      return items_.State(row) & static_cast<UINT>(lParam);
    case LVM_GETSELECTEDCOUNT:
      return items_.CountWith(LVIS_SELECTED);
    case LVM_SETEXTENDEDLISTVIEWSTYLE:
      return SetExtendedStyle(static_cast<DWORD>(row), static_cast<DWORD>(lParam));
    case LVM_GETEXTENDEDLISTVIEWSTYLE:
      return extendedStyle_;
    default:
      return Refuse("list view", message, 0);
  }
}

void ListView::OnSelected(const std::vector<int>& rows, int focused) {
  // Rows that lose the selection or the focus are notified first.
  for (int row = 0; row < items_.RowCount(); ++row) {
    if (!std::ranges::binary_search(rows, row)) ChangeOwnState(row, 0, LVIS_SELECTED, When::kLater);
    if (row != focused) ChangeOwnState(row, 0, LVIS_FOCUSED, When::kLater);
  }
  for (const int row : rows) {
    const UINT focus = row == focused ? LVIS_FOCUSED : 0;
    ChangeOwnState(row, LVIS_SELECTED | focus, LVIS_SELECTED | focus, When::kLater);
  }
  ChangeOwnState(focused, LVIS_FOCUSED, LVIS_FOCUSED, When::kLater);
}

void ListView::OnCheckClicked(int row) {
  const bool isChecked = (items_.State(row) & LVIS_STATEIMAGEMASK) == kChecked;
  ChangeOwnState(row, isChecked ? kUnchecked : kChecked, LVIS_STATEIMAGEMASK, When::kLater);
}

void ListView::OnHeaderClicked(int column) {
  NMLISTVIEW notification{};
  notification.iItem = -1;
  notification.iSubItem = column;
  NotifyLater(LVN_COLUMNCLICK, notification);
}

void ListView::OnHeaderResized(int column, int width) {
  if (items_.HasColumn(column)) items_.Column(column).width = width;
}

void ListView::OnRowClicked(int row, int column, bool twice) {
  NMITEMACTIVATE notification{};
  notification.iItem = row;
  notification.iSubItem = column;
  NotifyLater(twice ? NM_DBLCLK : NM_CLICK, notification);
}

LRESULT ListView::InsertColumn(int column, const LVCOLUMNW* given) {
  if (given == nullptr || column < 0) return -1;
  const int index = items_.InsertColumn(column, {{}, kDefaultColumnWidth, LVCFMT_LEFT});
  TakeColumn(index, *given);
  return index;
}

LRESULT ListView::SetColumn(int column, const LVCOLUMNW* given) {
  if (given == nullptr || !items_.HasColumn(column)) return FALSE;
  TakeColumn(column, *given);
  return TRUE;
}

LRESULT ListView::GetColumn(int column, LVCOLUMNW* result) const {
  if (result == nullptr || !items_.HasColumn(column)) return FALSE;
  const ListViewColumn& data = items_.Columns()[static_cast<std::size_t>(column)];
  if ((result->mask & LVCF_FMT) != 0) result->fmt = data.format;
  if ((result->mask & LVCF_WIDTH) != 0) result->cx = data.width;
  if ((result->mask & LVCF_SUBITEM) != 0) result->iSubItem = column;
  if ((result->mask & LVCF_TEXT) != 0) CopyBounded(data.title, result->pszText, result->cchTextMax);
  return TRUE;
}

void ListView::TakeColumn(int column, const LVCOLUMNW& given) {
  ListViewColumn& data = items_.Column(column);
  // The first column is always aligned to the left, as documented.
  if ((given.mask & LVCF_FMT) != 0 && column > 0) data.format = given.fmt & LVCFMT_JUSTIFYMASK;
  if ((given.mask & LVCF_WIDTH) != 0) data.width = std::max(given.cx, 0);
  if ((given.mask & LVCF_TEXT) != 0 && HasText(given.pszText)) data.title = given.pszText;
  if (Peer() != nullptr) Peer()->ColumnsChanged();
}

LRESULT ListView::SetColumnWidth(int column, int width) {
  if (!items_.HasColumn(column)) return FALSE;
  if (width < 0) {
    if (Peer() == nullptr || width < LVSCW_AUTOSIZE_USEHEADER) return FALSE;
    width = FittingWidth(column, width == LVSCW_AUTOSIZE_USEHEADER);
  }
  items_.Column(column).width = width;
  if (Peer() != nullptr) Peer()->ColumnsChanged();
  return TRUE;
}

int ListView::FittingWidth(int column, bool useHeader) const {
  const bool hasCheckBox = column == 0 && (extendedStyle_ & LVS_EX_CHECKBOXES) != 0;
  int width = 0;
  for (int row = 0; row < items_.RowCount(); ++row)
    width = std::max(width, Peer()->RowWidthFor(items_.Text(row, column), hasCheckBox));
  if (!useHeader) return width;
  const auto& columns = items_.Columns();
  width = std::max(width, Peer()->HeaderWidthFor(columns[static_cast<std::size_t>(column)].title));
  if (column + 1 != static_cast<int>(columns.size())) return width;
  // The last column takes the remaining width.
  int left = Peer()->ClientWidth();
  for (auto other = columns.begin(); other + 1 != columns.end(); ++other)
    left -= other->width;
  return std::max(width, left);
}

LRESULT ListView::InsertItem(const LVITEMW* given) {
  if (given == nullptr || given->iSubItem != 0 || given->iItem < 0) return -1;
  if ((given->mask & LVIF_TEXT) != 0 && IsCallback(given->pszText)) {
    return Refuse("list view: texts of callbacks", LVM_INSERTITEMW, -1);
  }
  ListViewItems::Item item;
  if ((given->mask & LVIF_TEXT) != 0 && given->pszText != nullptr) item.texts = {given->pszText};
  if ((given->mask & LVIF_PARAM) != 0) item.data = given->lParam;
  const int row = items_.InsertRow(given->iItem, std::move(item));
  if (Peer() != nullptr) Peer()->RowInserted(row);
  NMLISTVIEW notification = NotificationOf(row);
  Notify(LVN_INSERTITEM, notification);
  if (!Self().IsLive()) return row;
  const bool hasCheckBox = (extendedStyle_ & LVS_EX_CHECKBOXES) != 0;
  if (hasCheckBox) ChangeState(row, kUnchecked, LVIS_STATEIMAGEMASK, When::kNow);
  if ((given->mask & LVIF_STATE) != 0) {
    ChangeState(row, given->state, given->stateMask & ~LVIS_STATEIMAGEMASK, When::kNow);
  }
  return row;
}

LRESULT ListView::SetItem(const LVITEMW* given) {
  if (given == nullptr || !items_.HasRow(given->iItem)) return FALSE;
  const int row = given->iItem;
  // Data and state belong to the row, not to a subitem.
  if (given->iSubItem != 0 && (given->mask & (LVIF_PARAM | LVIF_STATE)) != 0) return FALSE;
  if ((given->mask & LVIF_PARAM) != 0) items_.Row(row).data = given->lParam;
  if ((given->mask & LVIF_TEXT) != 0 && !SetItemText(row, given)) return FALSE;
  if ((given->mask & LVIF_STATE) != 0) SetItemState(row, given);
  return TRUE;
}

LRESULT ListView::GetItem(LVITEMW* result) const {
  if (result == nullptr || !items_.HasRow(result->iItem)) return FALSE;
  const ListViewItems::Item& item = items_.Row(result->iItem);
  if ((result->mask & LVIF_TEXT) != 0) GetItemText(result->iItem, result);
  if ((result->mask & LVIF_PARAM) != 0) result->lParam = item.data;
  if ((result->mask & LVIF_STATE) != 0) result->state = item.state & result->stateMask;
  return TRUE;
}

bool ListView::SetItemText(int row, const LVITEMW* given) {
  if (given == nullptr || !items_.HasRow(row) || IsCallback(given->pszText)) return false;
  if (given->iSubItem != 0 && !items_.HasColumn(given->iSubItem)) return false;
  items_.SetText(row, given->iSubItem, given->pszText != nullptr ? given->pszText : L"");
  if (Peer() != nullptr) Peer()->RowChanged(row);
  NMLISTVIEW notification = NotificationOf(row);
  notification.iSubItem = given->iSubItem;
  notification.uChanged = LVIF_TEXT;
  Notify(LVN_ITEMCHANGED, notification);
  return true;
}

LRESULT ListView::GetItemText(int row, LVITEMW* result) const {
  if (result == nullptr) return 0;
  return CopyBounded(items_.Text(row, result->iSubItem), result->pszText, result->cchTextMax);
}

LRESULT ListView::DeleteItem(int row) {
  if (!items_.HasRow(row)) return FALSE;
  NMLISTVIEW notification = NotificationOf(row);
  Notify(LVN_DELETEITEM, notification);
  if (!Self().IsLive() || !items_.HasRow(row)) return FALSE;
  items_.RemoveRow(row);
  if (Peer() != nullptr) Peer()->RowRemoved(row);
  return TRUE;
}

LRESULT ListView::DeleteAllItems() {
  NMLISTVIEW notification{};
  notification.iItem = -1;
  const bool notifyEach = Notify(LVN_DELETEALLITEMS, notification) == FALSE;
  for (int row = 0; notifyEach && Self().IsLive() && row < items_.RowCount(); ++row) {
    notification = NotificationOf(row);
    Notify(LVN_DELETEITEM, notification);
  }
  if (!Self().IsLive()) return FALSE;
  items_.Clear();
  if (Peer() != nullptr) Peer()->RowsReplaced();
  return TRUE;
}

LRESULT ListView::Sort(LPARAM parameter, PFNLVCOMPARE compare) {
  if (compare == nullptr) return FALSE;
  items_.Sort(compare, parameter);
  if (Peer() != nullptr) Peer()->RowsReplaced();
  return TRUE;
}

LRESULT ListView::NextItem(int after, UINT flags) const {
  if ((flags & ~(LVNI_FOCUSED | LVNI_SELECTED)) != 0) {
    return Refuse("list view: directions", LVM_GETNEXTITEM, -1);
  }
  // The flags have the values of the state bits.
  return items_.NextWith(after, flags);
}

LRESULT ListView::EnsureVisible(int row) {
  if (!items_.HasRow(row)) return FALSE;
  if (Peer() != nullptr) Peer()->EnsureVisible(row);
  return TRUE;
}

LRESULT ListView::SetItemState(int row, const LVITEMW* given) {
  if (given == nullptr) return FALSE;
  const UINT state = given->state;
  const UINT mask = given->stateMask & kStates;
  if (row == -1) {
    for (int each = 0; Self().IsLive() && each < items_.RowCount(); ++each)
      ChangeState(each, state, mask, When::kNow);
    return TRUE;
  }
  if (!items_.HasRow(row)) return FALSE;
  ChangeState(row, state, mask, When::kNow);
  return TRUE;
}

void ListView::ChangeState(int row, UINT state, UINT mask, When when) {
  UINT single = LVIS_FOCUSED;
  if ((Self().Style() & LVS_SINGLESEL) != 0) single |= LVIS_SELECTED;
  const UINT taken = state & mask & single;
  for (int other = 0; taken != 0 && Self().IsLive() && other < items_.RowCount(); ++other) {
    if (other != row) ChangeOwnState(other, 0, taken, when);
  }
  if (Self().IsLive()) ChangeOwnState(row, state, mask, when);
}

void ListView::ChangeOwnState(int row, UINT state, UINT mask, When when) {
  if (!items_.HasRow(row)) return;
  const UINT before = items_.Row(row).state;
  const UINT after = (before & ~mask) | (state & mask);
  const UINT changed = before ^ after;
  if (changed == 0) return;
  items_.Row(row).state = after;
  if (Peer() != nullptr) Peer()->RowChanged(row);
  // The state image is one number, so all its bits are notified when one has changed.
  const UINT notified =
      (changed & LVIS_STATEIMAGEMASK) != 0 ? changed | LVIS_STATEIMAGEMASK : changed;
  NMLISTVIEW notification = NotificationOf(row);
  notification.uNewState = after & notified;
  notification.uOldState = before & notified;
  notification.uChanged = LVIF_STATE;
  if (when == When::kLater) {
    NotifyChangeLater(notification);
  } else {
    Notify(LVN_ITEMCHANGED, notification);
  }
}

// The desktop reports focus and selection separately; for one row they are merged into one
// notification.
void ListView::NotifyChangeLater(const NMLISTVIEW& change) {
  const auto pending = std::ranges::find_if(
      unsent_, [&](const NMLISTVIEW& each) { return AreOneMove(each, change); });
  if (pending != unsent_.end()) {
    pending->uNewState |= change.uNewState;
    pending->uOldState |= change.uOldState;
    return;
  }
  if (unsent_.empty()) Later<ListView>([](ListView& self) { self.NotifyChanges(); });
  unsent_.push_back(change);
}

void ListView::NotifyChanges() {
  for (NMLISTVIEW& change : std::exchange(unsent_, {})) {
    if (Self().IsLive()) Notify(LVN_ITEMCHANGED, change);
  }
}

LRESULT ListView::SetExtendedStyle(DWORD mask, DWORD style) {
  const DWORD before = extendedStyle_;
  if (mask == 0) mask = ~DWORD{0};
  if ((style & mask & ~kExtendedStyles) != 0) LogLine("list view: an extended style is ignored");
  extendedStyle_ = ((before & ~mask) | (style & mask)) & kExtendedStyles;
  if (Peer() != nullptr) Peer()->SetExtendedStyle(extendedStyle_);
  if (((before ^ extendedStyle_) & LVS_EX_CHECKBOXES) == 0) return before;
  const UINT image = (extendedStyle_ & LVS_EX_CHECKBOXES) != 0 ? kUnchecked : 0;
  for (int row = 0; Self().IsLive() && row < items_.RowCount(); ++row)
    ChangeState(row, image, LVIS_STATEIMAGEMASK, When::kNow);
  return before;
}

NMLISTVIEW ListView::NotificationOf(int row) const {
  NMLISTVIEW notification{};
  notification.iItem = row;
  notification.lParam = items_.Row(row).data;
  return notification;
}

}  // namespace platform
