// The cells that have been stored, in the order of their rows and, within a row, columns. Owned by
// a grid's slot, on the thread of its window. A cell is found in logarithmic time; cells may come
// in any order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "grid/grid_types.h"

namespace quillgate {

// How a text is shown, decided when it is stored; the values are those of CellRecord::type.
enum class CellType : wchar_t {
  kText = L'A',
  kNumber = L'N',
  kTrue = L'T',    // a ticked check box
  kFalse = L'F',   // an empty one
  kGraphic = L'G'  // drawn by the parent
};

// "TRUE" and "FALSE" in any case are check boxes, a text that begins with "~" is a graphic. A
// number has digits, at most one ".", no letters, no spaces, and "+" or "-" at its beginning only.
CellType TypeOf(std::wstring_view text);

struct CellRecord {
  bool isProtected = false;
  CellType type = CellType::kText;
  std::wstring text;
};

class CellStore {
 public:
  // Null when nothing is stored there. Valid until the store next changes.
  const CellRecord* Find(GridCell cell) const;
  CellRecord* Find(GridCell cell);
  // Replaces what is there. Throws std::bad_alloc; nothing has changed then.
  void Store(GridCell cell, CellRecord record);
  // False when there was nothing.
  bool Remove(GridCell cell);
  void Clear();

  std::size_t Size() const;
  // The row of the last cell in order; nothing without cells.
  std::optional<std::int32_t> LastRow() const;

 private:
  struct Entry {
    std::int32_t col = 0;
    CellRecord record;
  };
  // By column; never empty.
  using Row = std::vector<Entry>;

  std::map<std::int32_t, Row> rows_;
  std::size_t size_ = 0;
};

}  // namespace quillgate
