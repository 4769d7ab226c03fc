// Types that the parts of the grid control share. Plain data; lengths are in pixels, positions in
// client coordinates.
#pragma once

#include <cstdint>

namespace quillgate {

// A cell by its row and column. Row 0 holds the column headings, column 0 the row headings.
// Messages carry pointers to it, so its layout is part of the control's interface.
struct GridCell {
  std::int32_t row = 0;
  std::int32_t col = 0;

  bool operator==(const GridCell&) const = default;
};

inline constexpr std::int32_t kGridMaxRows = 32'000;
inline constexpr std::int32_t kGridMaxCols = 256;
// Maximum length of a title and of text typed into a cell, in characters.
inline constexpr std::size_t kGridMaxText = 300;

struct GridPoint {
  std::int32_t x = 0;
  std::int32_t y = 0;

  bool operator==(const GridPoint&) const = default;
};

struct GridSize {
  std::int32_t width = 0;
  std::int32_t height = 0;

  bool operator==(const GridSize&) const = default;
};

// Excludes its right column and bottom row of pixels, as RECT does.
struct GridRect {
  std::int32_t left = 0;
  std::int32_t top = 0;
  std::int32_t right = 0;
  std::int32_t bottom = 0;

  bool operator==(const GridRect&) const = default;
};

constexpr bool IsEmpty(const GridRect& rect) {
  return rect.right <= rect.left || rect.bottom <= rect.top;
}

// 0x00BBGGRR.
using GridColour = std::uint32_t;

// An HFONT; 0: none.
using GridFont = std::uintptr_t;

}  // namespace quillgate
