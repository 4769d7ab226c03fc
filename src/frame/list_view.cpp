#include "frame/list_view.h"

#include <windowsx.h>

#include <algorithm>

namespace quillgate {
namespace {

// The list view only reads the text, although its structures take a writable pointer.
LPWSTR Borrowed(const std::wstring& text) {
  return const_cast<LPWSTR>(text.c_str());
}

}  // namespace

void ListView::AddColumn(const std::wstring& heading, int width, int alignment) const {
  LVCOLUMNW column{};
  column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
  column.pszText = Borrowed(heading);
  column.cx = width;
  column.fmt = alignment;
  constexpr int kAfterTheOthers = 1000;
  ListView_InsertColumn(Window(), kAfterTheOthers, &column);
}

void ListView::SetHeading(int column, const std::wstring& heading) const {
  LVCOLUMNW change{};
  change.mask = LVCF_TEXT;
  change.pszText = Borrowed(heading);
  Send(LVM_SETCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&change));
}

int ListView::AddRow(const std::wstring& text, LPARAM data) const {
  LVITEMW item{};
  item.mask = LVIF_TEXT | LVIF_PARAM;
  item.iItem = Count();
  item.pszText = Borrowed(text);
  item.lParam = data;
  return ListView_InsertItem(Window(), &item);
}

void ListView::SetCell(int row, int column, const std::wstring& text) const {
  ListView_SetItemText(Window(), row, column, Borrowed(text));
}

std::wstring ListView::Cell(int row, int column) const {
  constexpr int kMaximumLength = 255;
  wchar_t text[kMaximumLength + 1] = L"";
  ListView_GetItemText(Window(), row, column, text, kMaximumLength + 1);
  return text;
}

void ListView::SelectAndShow(int row) const {
  if (row < 0) return;
  constexpr UINT kSelected = LVIS_SELECTED | LVIS_FOCUSED;
  ListView_SetItemState(Window(), row, kSelected, kSelected);
  Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
}

std::optional<int> ListView::SelectedBy(const NMHDR& header) {
  if (header.code != LVN_ITEMCHANGED) return {};
  const auto& change = reinterpret_cast<const NMLISTVIEW&>(header);
  const bool isSelection = (change.uChanged & LVIF_STATE) != 0 &&
                           (change.uNewState & ~change.uOldState & LVIS_SELECTED) != 0;
  return isSelection ? std::optional(change.iItem) : std::nullopt;
}

void ListView::SetRowCount(int count) const {
  Send(LVM_SETITEMCOUNT, static_cast<WPARAM>(count), LVSICF_NOSCROLL);
}

void ListView::Redraw() const {
  Send(LVM_REDRAWITEMS, 0, Count() - 1);
}

void ListView::AnswerTextRequest(const NMHDR& header, const TextOfCell& textOf) {
  // The answer goes into the notification itself.
  LVITEMW item = reinterpret_cast<const NMLVDISPINFOW&>(header).item;
  if ((item.mask & LVIF_TEXT) == 0 || item.pszText == nullptr || item.cchTextMax <= 0) return;
  const std::wstring text = textOf(item.iItem, item.iSubItem);
  const std::size_t copied = text.copy(item.pszText, static_cast<std::size_t>(item.cchTextMax) - 1);
  item.pszText[copied] = L'\0';
}

void ListView::Select(int row, bool selected) const {
  ListView_SetItemState(Window(), row, selected ? LVIS_SELECTED : 0u, LVIS_SELECTED);
}

int ListView::Next(int after, UINT flags) const {
  return static_cast<int>(Send(LVM_GETNEXTITEM, static_cast<WPARAM>(after), MAKELPARAM(flags, 0)));
}

RECT ListView::RowBounds(int row) const {
  RECT bounds{};
  bounds.left = LVIR_BOUNDS;
  const bool exists =
      Send(LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&bounds)) != FALSE;
  return exists ? bounds : RECT{};
}

POINT ListView::MenuPosition(LPARAM position) const {
  POINT place{GET_X_LPARAM(position), GET_Y_LPARAM(position)};
  if (place.x != -1 || place.y != -1) return place;
  RECT area{};
  ::GetClientRect(Window(), &area);
  place = {area.left, std::clamp(RowBounds(FocusedRow()).bottom, area.top, area.bottom)};
  ::ClientToScreen(Window(), &place);
  return place;
}

bool ListView::IsCheckChange(const NMHDR& header) {
  if (header.code != LVN_ITEMCHANGED) return false;
  const auto& change = reinterpret_cast<const NMLISTVIEW&>(header);
  const UINT before = change.uOldState & LVIS_STATEIMAGEMASK;
  const UINT after = change.uNewState & LVIS_STATEIMAGEMASK;
  // A new row changes from no check box to its first one; that is not a change by the user.
  return (change.uChanged & LVIF_STATE) != 0 && before != 0 && before != after;
}

void ListView::Sort(const Comparison& compare) const {
  const PFNLVCOMPARE call = [](LPARAM first, LPARAM second, LPARAM comparison) -> int {
    return (*reinterpret_cast<const Comparison*>(comparison))(first, second);
  };
  ListView_SortItems(Window(), call, reinterpret_cast<LPARAM>(&compare));
}

}  // namespace quillgate
