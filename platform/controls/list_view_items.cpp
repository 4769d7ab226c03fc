#include "platform/controls/list_view_items.h"

#include <algorithm>

namespace platform {

std::wstring ListViewItems::Text(int row, int column) const {
  if (!HasRow(row) || column < 0) return {};
  const std::vector<std::wstring>& texts = Row(row).texts;
  const auto index = static_cast<std::size_t>(column);
  return index < texts.size() ? texts[index] : std::wstring();
}

UINT ListViewItems::State(int row) const {
  return HasRow(row) ? Row(row).state : 0;
}

bool ListViewItems::HasColumn(int column) const {
  return column >= 0 && column < static_cast<int>(columns_.size());
}

void ListViewItems::SetText(int row, int column, const std::wstring& text) {
  std::vector<std::wstring>& texts = Row(row).texts;
  const auto index = static_cast<std::size_t>(column);
  if (index >= texts.size()) texts.resize(index + 1);
  texts[index] = text;
}

int ListViewItems::InsertRow(int row, Item item) {
  const int index = std::clamp(row, 0, RowCount());
  items_.insert(items_.begin() + index, std::move(item));
  return index;
}

void ListViewItems::RemoveRow(int row) {
  items_.erase(items_.begin() + row);
}

void ListViewItems::Sort(PFNLVCOMPARE compare, LPARAM parameter) {
  std::ranges::stable_sort(items_, [&](const Item& first, const Item& second) {
    return compare(first.data, second.data, parameter) < 0;
  });
}

int ListViewItems::NextWith(int after, UINT state) const {
  if (after >= RowCount()) return -1;
  for (int row = std::max(after, -1) + 1; row < RowCount(); ++row) {
    if ((Row(row).state & state) == state) return row;
  }
  return -1;
}

int ListViewItems::CountWith(UINT state) const {
  return static_cast<int>(std::ranges::count_if(
      items_, [state](const Item& item) { return (item.state & state) == state; }));
}

int ListViewItems::InsertColumn(int column, ListViewColumn data) {
  const int index = std::clamp(column, 0, static_cast<int>(columns_.size()));
  columns_.insert(columns_.begin() + index, std::move(data));
  for (Item& item : items_) {
    const auto texts = static_cast<int>(item.texts.size());
    if (index < texts) item.texts.insert(item.texts.begin() + index, std::wstring());
  }
  return index;
}

}  // namespace platform
