#include "platform/controls/row_ranges.h"

#include <algorithm>
#include <iterator>

namespace platform {
namespace {

int CountOf(const RowRange& rows) {
  return rows.last - rows.first + 1;
}

}  // namespace

bool RowRanges::Contains(int row) const {
  const auto found = std::ranges::lower_bound(ranges_, row, {}, &RowRange::last);
  return found != ranges_.end() && found->first <= row;
}

int RowRanges::Next(int after) const {
  const int row = std::max(after, -1) + 1;
  const auto found = std::ranges::lower_bound(ranges_, row, {}, &RowRange::last);
  return found != ranges_.end() ? std::max(found->first, row) : -1;
}

void RowRanges::Add(RowRange rows) {
  // Ranges that overlap or adjoin become one.
  const auto from = Locate(rows.first - 1);
  const auto to = std::find_if(from, ranges_.end(),
                               [&](const RowRange& each) { return each.first - 1 > rows.last; });
  if (from != to) {
    rows.first = std::min(rows.first, from->first);
    rows.last = std::max(rows.last, std::prev(to)->last);
  }
  Insert(Erase(from, to), rows);
}

void RowRanges::Remove(RowRange rows) {
  const auto from = Locate(rows.first);
  const auto to = std::find_if(from, ranges_.end(),
                               [&](const RowRange& each) { return each.first > rows.last; });
  if (from == to) return;
  const RowRange head{from->first, rows.first - 1};
  const int end = std::prev(to)->last;
  auto place = Erase(from, to);
  if (end > rows.last) place = Insert(place, {rows.last + 1, end});
  if (head.first <= head.last) Insert(place, head);
}

void RowRanges::Toggle(RowRange rows) {
  RowRanges added;
  added.Add(rows);
  added = added.Without(*this);
  Remove(rows);
  for (const RowRange& each : added.All())
    Add(each);
}

RowRanges RowRanges::Without(const RowRanges& other) const {
  RowRanges rest;
  auto cut = other.ranges_.begin();
  for (RowRange each : ranges_) {
    cut = std::find_if(cut, other.ranges_.end(),
                       [&](const RowRange& range) { return range.last >= each.first; });
    for (auto next = cut; next != other.ranges_.end() && next->first <= each.last; ++next) {
      if (next->first > each.first) {
        rest.Insert(rest.ranges_.end(), {each.first, next->first - 1});
      }
      each.first = next->last + 1;
    }
    if (each.first <= each.last) rest.Insert(rest.ranges_.end(), each);
  }
  return rest;
}

void RowRanges::InsertRow(int row) {
  auto place = Locate(row);
  if (place != ranges_.end() && place->first < row) {
    const RowRange head{place->first, row - 1};
    place->first = row;
    place = std::next(ranges_.insert(place, head));
  }
  for (; place != ranges_.end(); ++place) {
    ++place->first;
    ++place->last;
  }
}

void RowRanges::RemoveRow(int row) {
  Remove({row, row});
  const auto place = Locate(row);
  for (auto each = place; each != ranges_.end(); ++each) {
    --each->first;
    --each->last;
  }
  if (place == ranges_.begin() || place == ranges_.end()) return;
  const auto before = std::prev(place);
  if (before->last + 1 != place->first) return;
  before->last = place->last;
  ranges_.erase(place);
}

RowRanges::Place RowRanges::Locate(int row) {
  return std::ranges::lower_bound(ranges_, row, {}, &RowRange::last);
}

RowRanges::Place RowRanges::Insert(Place place, RowRange rows) {
  count_ += CountOf(rows);
  return ranges_.insert(place, rows);
}

RowRanges::Place RowRanges::Erase(Place from, Place to) {
  for (auto each = from; each != to; ++each)
    count_ -= CountOf(*each);
  return ranges_.erase(from, to);
}

}  // namespace platform
