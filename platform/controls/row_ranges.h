// A set of rows as sorted ranges, so that a selection of a hundred thousand rows is one range.
// Plain data. Used by list views and their widgets.
#pragma once

#include <vector>

namespace platform {

// The rows from the first to the last, both included.
struct RowRange {
  int first = 0;
  int last = 0;
};

class RowRanges {
 public:
  bool IsEmpty() const { return ranges_.empty(); }
  int Count() const { return count_; }
  bool Contains(int row) const;
  // The first row of the set after that one (below zero: of all); -1 when there is none.
  int Next(int after) const;
  // Ascending; no two of them overlap or adjoin.
  const std::vector<RowRange>& All() const { return ranges_; }

  void Add(RowRange rows);
  void Remove(RowRange rows);
  // Adds the rows that are not in the set and removes the others.
  void Toggle(RowRange rows);
  // Those of this set that are not in the other one.
  RowRanges Without(const RowRanges& other) const;

  // Renumber the rows when one is inserted, which is not in the set, or removed.
  void InsertRow(int row);
  void RemoveRow(int row);

 private:
  using Place = std::vector<RowRange>::iterator;

  // The first range that ends at the row or after it.
  Place Locate(int row);
  Place Insert(Place place, RowRange rows);
  Place Erase(Place from, Place to);

  std::vector<RowRange> ranges_;
  int count_ = 0;
};

}  // namespace platform
