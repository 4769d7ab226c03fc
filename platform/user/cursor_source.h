// Overrides where the cursor position comes from: the simulated machine supplies it from data, in
// place of the desktop. Any thread.
#pragma once

#include <windef.h>

#include <functional>
#include <optional>

namespace platform {

// Returns nothing when the position cannot be read.
using CursorSource = std::function<std::optional<POINT>()>;
void SetCursorSource(CursorSource source);  // empty: the desktop supplies it

// Empty when none is set.
CursorSource CurrentCursorSource();

}  // namespace platform
