// Brushes of one colour. Any thread.
#pragma once

#include <optional>

#include "platform/gdi/selectable.h"

namespace platform {

class Brush final : public Selectable {
 public:
  // Nothing: a brush that leaves everything as it is.
  explicit Brush(std::optional<COLORREF> colour) : colour_(colour) {}
  // The brush of a system colour follows the desktop.
  struct SystemIndex {
    int index;
  };
  explicit Brush(SystemIndex system) : systemIndex_(system.index) {}

  std::optional<COLORREF> Colour() const;

 private:
  std::optional<COLORREF> colour_;
  std::optional<int> systemIndex_;
};

HBRUSH InsertBrush(std::shared_ptr<Brush> brush);

// The brush of a handle, or of a system colour's number plus one in place of a handle; null when it
// is neither.
std::shared_ptr<Brush> BrushOf(HBRUSH brush);

}  // namespace platform
