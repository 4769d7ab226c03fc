#include "platform/controls/list_view_items.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace platform {

std::wstring ListViewItems::Text(int row, int column) const {
  if (!HasRow(row) || column < 0) return {};
  const std::vector<std::wstring>& texts = Row(row).texts;
  const auto index = static_cast<std::size_t>(column);
  return index < texts.size() ? texts[index] : std::wstring();
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

std::vector<int> ListViewItems::Sort(PFNLVCOMPARE compare, LPARAM parameter) {
  std::vector<int> order(items_.size());
  std::iota(order.begin(), order.end(), 0);
  std::ranges::stable_sort(order, [&](int first, int second) {
    return compare(Row(first).data, Row(second).data, parameter) < 0;
  });
  std::vector<Item> sorted;
  sorted.reserve(items_.size());
  for (const int row : order)
    sorted.push_back(std::move(Row(row)));
  items_ = std::move(sorted);
  return order;
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
