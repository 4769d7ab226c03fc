// Who knows where the mouse is, in place of the desktop. The simulated machine answers from data.
// Any thread.
#pragma once

#include <windef.h>

#include <functional>
#include <optional>

namespace platform {

// Nothing: the place cannot be read.
using CursorSource = std::function<std::optional<POINT>()>;
void SetCursorSource(CursorSource source);  // empty: the desktop knows

// Empty unless one is set.
CursorSource CurrentCursorSource();

}  // namespace platform
