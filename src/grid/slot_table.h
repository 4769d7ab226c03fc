// The slots of all grid controls of the process. Used on the thread of their windows; without
// locks.
#pragma once

#include <array>
#include <cstdint>

#include "grid/grid_slot.h"

namespace quillgate {

class SlotTable {
 public:
  static constexpr std::size_t kSlots = 20;

  // Puts every slot into its initial state, those in use too: their controls find none afterwards.
  void Initialise();

  // Null for an identifier that no slot holds, and for 0.
  GridSlot* Find(std::uint32_t controlId);
  std::size_t NumberOf(const GridSlot& slot) const;
  // Another one each time that the slot is taken, released or initialised.
  const std::uint32_t& GenerationOf(const GridSlot& slot) const;
  // The free slot of the highest number, which holds the identifier from now on. Null when one
  // holds it already, when none is free, and for 0.
  GridSlot* Take(std::uint32_t controlId);
  // Empties the slot for the next control (ResetAfterDestruction).
  void Release(GridSlot& slot);

  std::size_t InUse() const;

 private:
  std::array<GridSlot, kSlots> slots_;
  std::array<std::uint32_t, kSlots> generations_{};
};

}  // namespace quillgate
