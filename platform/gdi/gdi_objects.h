// Resolves font and icon handles for the families that show them. Any thread.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>

#include "platform/gdi/image.h"

namespace platform {

// Null when the handle is not a live font.
std::optional<LOGFONTW> FontOf(HFONT font);

// Null when the handle is not live, or of another kind.
std::shared_ptr<const IconImages> IconOf(HICON icon);

}  // namespace platform
