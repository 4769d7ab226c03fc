#include "frame/list_view.h"

namespace quillgate {
namespace {

// The list view only reads the text, although its structures take a writable pointer.
LPWSTR Borrowed(const std::wstring& text) {
  return const_cast<LPWSTR>(text.c_str());
}

}  // namespace

void ListView::AddColumn(const std::wstring& heading, int width) const {
  LVCOLUMNW column{};
  column.mask = LVCF_TEXT | LVCF_WIDTH;
  column.pszText = Borrowed(heading);
  column.cx = width;
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
