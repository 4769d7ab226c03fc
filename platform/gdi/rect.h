// Operations on rectangles that drawing and painting share. Any thread.
#pragma once

#include <windows.h>

#include <algorithm>

namespace platform {

inline bool IsEmpty(const RECT& area) {
  return area.left >= area.right || area.top >= area.bottom;
}

// The intersection. Empty (see IsEmpty) when the rectangles do not overlap.
inline RECT Intersection(const RECT& one, const RECT& other) {
  return {std::max(one.left, other.left), std::max(one.top, other.top),
          std::min(one.right, other.right), std::min(one.bottom, other.bottom)};
}

}  // namespace platform
