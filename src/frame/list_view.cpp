#include "frame/list_view.h"

namespace quillgate {
namespace {

// The list view only reads the text, whatever its structures say.
LPWSTR Borrowed(const std::wstring& text) {
  return const_cast<LPWSTR>(text.c_str());
}

}  // namespace

void ListView::AddColumn(const std::wstring& heading, int width) const {
  LVCOLUMNW column{};
  column.mask = LVCF_TEXT | LVCF_WIDTH;
  column.pszText = Borrowed(heading);
  column.cx = width;
  constexpr WPARAM kBehindTheOthers = 1000;
  Send(LVM_INSERTCOLUMNW, kBehindTheOthers, reinterpret_cast<LPARAM>(&column));
}

void ListView::SetHeading(int column, const std::wstring& heading) const {
  LVCOLUMNW change{};
  change.mask = LVCF_TEXT;
  change.pszText = Borrowed(heading);
  Send(LVM_SETCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&change));
}

int ListView::AddRow(const std::wstring& text) const {
  LVITEMW item{};
  item.mask = LVIF_TEXT;
  item.iItem = static_cast<int>(Send(LVM_GETITEMCOUNT));
  item.pszText = Borrowed(text);
  return static_cast<int>(Send(LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)));
}

void ListView::SetCell(int row, int column, const std::wstring& text) const {
  LVITEMW item{};
  item.iSubItem = column;
  item.pszText = Borrowed(text);
  Send(LVM_SETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

}  // namespace quillgate
