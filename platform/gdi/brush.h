// Brushes of one colour. Any thread.
#pragma once

#include <optional>

#include "platform/gdi/selectable.h"

namespace platform {

class Brush final : public Selectable {
 public:
  // Without a colour the brush is hollow: it leaves the pixels as they are.
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

// Returns the brush of a handle. A system colour's index plus one is accepted in place of a handle.
// Returns null for anything else.
std::shared_ptr<Brush> BrushOf(HBRUSH brush);

}  // namespace platform
