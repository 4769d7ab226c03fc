// Solid pens of one colour and width, and the null pen. Any thread.
#pragma once

#include <optional>

#include "platform/gdi/selectable.h"

namespace platform {

class Pen final : public Selectable {
 public:
  // Without a colour the pen draws nothing. The width is at least 1.
  Pen(std::optional<COLORREF> penColour, int penWidth) : colour(penColour), width(penWidth) {}

  const std::optional<COLORREF> colour;
  const int width;
};

HPEN InsertPen(std::shared_ptr<Pen> pen);

}  // namespace platform
