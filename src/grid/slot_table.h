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

  // Resets every slot to its initial state, also those in use: their controls find no slot
  // afterwards.
  void Initialise();

  // Null when no slot has the identifier, and for 0.
  GridSlot* Find(std::uint32_t controlId);
  std::size_t NumberOf(const GridSlot& slot) const;
  // Changes each time the slot is taken, released or initialised.
  const std::uint32_t& GenerationOf(const GridSlot& slot) const;
  // Assigns the identifier to the free slot with the highest number. Null when the identifier is in
  // use, when no slot is free, and for 0.
  GridSlot* Take(std::uint32_t controlId);
  // Frees the slot for the next control (ResetAfterDestruction).
  void Release(GridSlot& slot);

  std::size_t InUse() const;

 private:
  std::array<GridSlot, kSlots> slots_;
  std::array<std::uint32_t, kSlots> generations_{};
};

}  // namespace quillgate
