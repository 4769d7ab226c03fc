// Logical fonts. The desktop module maps them to installed ones. Any thread.
#pragma once

#include "platform/gdi/selectable.h"

namespace platform {

class Font final : public Selectable {
 public:
  explicit Font(const LOGFONTW& fields) : description(fields) {}

  const LOGFONTW description;
};

HFONT InsertFont(std::shared_ptr<Font> font);

}  // namespace platform
