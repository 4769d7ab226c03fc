#include "grid/cell_store.h"

#include <algorithm>
#include <utility>

namespace quillgate {
namespace {

// Whether the entry at the index is the column's.
template <typename Row>
bool IsAt(const Row& row, std::size_t index, std::int32_t col) {
  return index < row.size() && row[index].col == col;
}

// The column's entry, or the position to insert it at. Rows are mostly filled from column 1, or 0,
// on. Those indexes are tried first: each step of a binary search waits for memory in a large
// store.
template <typename Row>
auto PositionOf(Row& row, std::int32_t col) {
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
  const auto entry = PositionOf(row->second, cell.col);
  return entry != row->second.end() && entry->col == cell.col ? &entry->record : nullptr;
}

CellRecord* CellStore::Find(GridCell cell) {
  return const_cast<CellRecord*>(std::as_const(*this).Find(cell));
}

void CellStore::Store(GridCell cell, CellRecord record) {
  const auto row = rows_.lower_bound(cell.row);
  if (row == rows_.end() || row->first != cell.row) {
    // Filled before it is added: an exception must not leave an empty row behind.
    Row added;
    added.push_back({cell.col, std::move(record)});
    rows_.emplace_hint(row, cell.row, std::move(added));
    ++size_;
    return;
  }
  const auto entry = PositionOf(row->second, cell.col);
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
  const auto entry = PositionOf(row->second, cell.col);
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
