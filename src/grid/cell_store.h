// The stored cells of a grid, ordered by row and then by column. Owned by a grid's slot and used on
// the thread of its window. A lookup takes logarithmic time; cells may be stored in any order.
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

// How a text is displayed, determined when it is stored.
enum class CellType : wchar_t {
  kText = L'A',
  kNumber = L'N',
  kTrue = L'T',    // a checked check box
  kFalse = L'F',   // an unchecked check box
  kGraphic = L'G'  // drawn by the parent
};

// "TRUE" and "FALSE" in any case are check boxes; a text that begins with "~" is a graphic. A
// number has digits, at most one ".", no letters, no spaces, and "+" or "-" only at its beginning.
CellType TypeOf(std::wstring_view text);

struct CellRecord {
  bool isProtected = false;
  CellType type = CellType::kText;
  std::wstring text;
};

class CellStore {
 public:
  // Null when no cell is stored there. Valid until the store changes.
  const CellRecord* Find(GridCell cell) const;
  CellRecord* Find(GridCell cell);
  // Replaces the stored cell. Throws std::bad_alloc; the store is then unchanged.
  void Store(GridCell cell, CellRecord record);
  // False when no cell was stored there.
  bool Remove(GridCell cell);
  void Clear();

  std::size_t Size() const;
  // The row of the last cell in order; nullopt when the store is empty.
  std::optional<std::int32_t> LastRow() const;

 private:
  struct Entry {
    std::int32_t col = 0;
    CellRecord record;
  };
  // Sorted by column; never empty.
  using Row = std::vector<Entry>;

  std::map<std::int32_t, Row> rows_;
  std::size_t size_ = 0;
};

}  // namespace quillgate
