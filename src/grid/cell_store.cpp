#include "grid/cell_store.h"

#include <algorithm>
#include <utility>

namespace quillgate {
namespace {

// Whether the entry of the column stands there.
template <typename Row>
bool IsAt(const Row& row, std::size_t place, std::int32_t col) {
  return place < row.size() && row[place].col == col;
}

// The entry of the column, or where it belongs. Rows are mostly filled from column 1, or 0, on:
// looking there first saves the steps of a search, each of which waits for memory in a large store.
template <typename Row>
auto PlaceOf(Row& row, std::int32_t col) {
  const auto guess = static_cast<std::size_t>(col);
  if (IsAt(row, guess - 1, col)) return row.begin() + (col - 1);
  if (IsAt(row, guess, col)) return row.begin() + col;
  return std::lower_bound(row.begin(), row.end(), col, [](const auto& entry, std::int32_t wanted) {
    return entry.col < wanted;
  });
}

}  // namespace

const CellRecord* CellStore::Find(GridCell cell) const {
  const auto row = rows_.find(cell.row);
  if (row == rows_.end()) return nullptr;
  const auto entry = PlaceOf(row->second, cell.col);
  return entry != row->second.end() && entry->col == cell.col ? &entry->record : nullptr;
}

CellRecord* CellStore::Find(GridCell cell) {
  return const_cast<CellRecord*>(std::as_const(*this).Find(cell));
}

void CellStore::Store(GridCell cell, CellRecord record) {
  const auto row = rows_.lower_bound(cell.row);
  if (row == rows_.end() || row->first != cell.row) {
    // Filled before it is added: a row without cells must not be left behind.
    Row added;
    added.push_back({cell.col, std::move(record)});
    rows_.emplace_hint(row, cell.row, std::move(added));
    ++size_;
    return;
  }
  const auto entry = PlaceOf(row->second, cell.col);
  if (entry != row->second.end() && entry->col == cell.col) {
    entry->record = std::move(record);
    return;
  }
  row->second.insert(entry, {cell.col, std::move(record)});
  ++size_;
}

bool CellStore::Remove(GridCell cell) {
  const auto row = rows_.find(cell.row);
  if (row == rows_.end()) return false;
  const auto entry = PlaceOf(row->second, cell.col);
  if (entry == row->second.end() || entry->col != cell.col) return false;
  row->second.erase(entry);
  if (row->second.empty()) rows_.erase(row);
  --size_;
  return true;
}

void CellStore::Clear() {
  rows_.clear();
  size_ = 0;
}

std::size_t CellStore::Size() const {
  return size_;
}

std::optional<std::int32_t> CellStore::LastRow() const {
  if (rows_.empty()) return std::nullopt;
  return rows_.rbegin()->first;
}

}  // namespace quillgate
