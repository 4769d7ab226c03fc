#include "platform/controls/list_view.h"

#include <algorithm>
#include <array>

#include "platform/controls/control_peers.h"
#include "platform/kernel/log.h"
#include "platform/user/desktop.h"

namespace platform {
namespace {

constexpr DWORD kStyles = LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_ALIGNLEFT |
                          LVS_OWNERDATA | LVS_NOCOLUMNHEADER | LVS_NOSORTHEADER;
constexpr DWORD kOwnStyles = 0xFFFF;  // the low word is the class's own
constexpr UINT kLastMessage = LVM_FIRST + 255;
constexpr int kDefaultColumnWidth = 10;  // pixels, as documented

bool IsSupported(DWORD style) {
  return (style & LVS_TYPEMASK) == LVS_REPORT && (style & kOwnStyles & ~kStyles) == 0;
}

template <std::size_t kCount>
bool IsAmong(const std::array<UINT, kCount>& messages, UINT message) {
  return std::ranges::find(messages, message) != messages.end();
}

bool ChangesRows(UINT message) {
  constexpr std::array kMessages = {
      LVM_INSERTITEMW, LVM_SETITEMW,     LVM_DELETEITEM,   LVM_DELETEALLITEMS,
      LVM_SORTITEMS,   LVM_SETITEMSTATE, LVM_SETITEMCOUNT,
  };
  return IsAmong(kMessages, message);
}

// Whether the message is for lists that keep their rows.
bool IsOfKeptRows(UINT message) {
  constexpr std::array kMessages = {LVM_INSERTITEMW, LVM_SETITEMTEXTW, LVM_DELETEITEM,
                                    LVM_SORTITEMS};
  return IsAmong(kMessages, message);
}

}  // namespace

std::unique_ptr<WindowPeer> ListView::MakePeer(Window& /*window*/, WindowPeer* parent) {
  return DesktopSide<ControlSide>().Controls().MakeListView(Origin(parent), *this, *this);
}

std::optional<LRESULT> ListView::Answer(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE && !IsSupported(Self().Style())) {
    LogLine("list view: report view only, and not with these styles");
    return FALSE;
  }
  if (message == WM_GETDLGCODE) return DLGC_WANTARROWS | DLGC_WANTCHARS;
  if (message == WM_KEYDOWN) NotifyKey(wParam);
  if (message < LVM_FIRST || message > kLastMessage) return std::nullopt;
  if (ChangesRows(message)) {
    NotifyUserChanges();
    if (!Self().IsLive()) return 0;
  }
  if (IsOwnerData() && IsOfKeptRows(message)) {
    return Refuse("list view: rows of the program", message, message == LVM_INSERTITEMW ? -1 : 0);
  }
  if (message == LVM_SORTITEMS) {
    return Sort(static_cast<LPARAM>(wParam), reinterpret_cast<PFNLVCOMPARE>(lParam));
  }
  if (message == LVM_SETITEMCOUNT) return SetItemCount(wParam, lParam);
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
      return RowCount();
    case LVM_ENSUREVISIBLE:
      return EnsureVisible(row);
    case LVM_GETITEMRECT:
      return GetItemRect(row, reinterpret_cast<RECT*>(lParam));
    case LVM_REDRAWITEMS:
      return RedrawItems();
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
      return State(row) & static_cast<UINT>(lParam);
    case LVM_GETSELECTEDCOUNT:
      return states_.selected.Count();
    case LVM_SETEXTENDEDLISTVIEWSTYLE:
      return SetExtendedStyle(static_cast<DWORD>(row), static_cast<DWORD>(lParam));
    case LVM_GETEXTENDEDLISTVIEWSTYLE:
      return extendedStyle_;
    default:
      return Refuse("list view", message, 0);
  }
}

// The widget has used the key already.
void ListView::NotifyKey(WPARAM virtualKey) const {
  alignas(NMHDR) NMLVKEYDOWN notification{};
  notification.wVKey = static_cast<WORD>(virtualKey);
  Notify(LVN_KEYDOWN, notification);
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
  if (Peer() != nullptr) Peer()->ColumnInserted();
  return index;
}

LRESULT ListView::SetColumn(int column, const LVCOLUMNW* given) {
  if (given == nullptr || !items_.HasColumn(column)) return FALSE;
  TakeColumn(column, *given);
  if (Peer() != nullptr) Peer()->ColumnChanged(column);
  return TRUE;
}

LRESULT ListView::GetColumn(int column, LVCOLUMNW* result) const {
  if (result == nullptr || !items_.HasColumn(column)) return FALSE;
  const ListViewColumn& data = items_.Column(column);
  if ((result->mask & LVCF_FMT) != 0) result->fmt = data.format;
  if ((result->mask & LVCF_WIDTH) != 0) result->cx = data.width;
  if ((result->mask & LVCF_SUBITEM) != 0) result->iSubItem = column;
  if ((result->mask & LVCF_TEXT) != 0) CopyBounded(data.title, result->pszText, result->cchTextMax);
  return TRUE;
}

void ListView::TakeColumn(int column, const LVCOLUMNW& given) {
  ListViewColumn& data = items_.Column(column);
  const bool hasTitle = given.pszText != nullptr && !IsTextCallback(given.pszText);
  // The first column is always aligned to the left, as documented.
  if ((given.mask & LVCF_FMT) != 0 && column > 0) data.format = given.fmt & LVCFMT_JUSTIFYMASK;
  if ((given.mask & LVCF_WIDTH) != 0) data.width = std::max(given.cx, 0);
  if ((given.mask & LVCF_TEXT) != 0 && hasTitle) data.title = given.pszText;
}

LRESULT ListView::SetColumnWidth(int column, int width) {
  if (!items_.HasColumn(column)) return FALSE;
  if (width < 0) {
    if (Peer() == nullptr || width < LVSCW_AUTOSIZE_USEHEADER) return FALSE;
    width = FittingWidth(column, width == LVSCW_AUTOSIZE_USEHEADER);
  }
  items_.Column(column).width = width;
  if (Peer() != nullptr) Peer()->ColumnChanged(column);
  return TRUE;
}

int ListView::FittingWidth(int column, bool useHeader) const {
  const bool hasCheckBox = column == 0 && HasCheckBoxes();
  // Of the program's rows only those in view are asked for.
  const RowRange rows = IsOwnerData() ? Peer()->RowsInView() : RowRange{0, RowCount() - 1};
  int width = 0;
  for (int row = rows.first; row <= rows.last; ++row)
    width = std::max(width, Peer()->RowWidthFor(Text(row, column), hasCheckBox));
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

}  // namespace platform
