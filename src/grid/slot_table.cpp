#include "grid/slot_table.h"

#include <algorithm>

namespace quillgate {

void SlotTable::Initialise() {
  slots_.fill(GridSlot{});
  for (std::uint32_t& generation : generations_)
    ++generation;
}

GridSlot* SlotTable::Find(std::uint32_t controlId) {
  if (controlId == 0) return nullptr;
  const auto found = std::find_if(slots_.begin(), slots_.end(), [controlId](const GridSlot& slot) {
    return slot.controlId == controlId;
  });
  return found == slots_.end() ? nullptr : &*found;
}

std::size_t SlotTable::NumberOf(const GridSlot& slot) const {
  return static_cast<std::size_t>(&slot - slots_.data());
}

const std::uint32_t& SlotTable::GenerationOf(const GridSlot& slot) const {
  return generations_[NumberOf(slot)];
}

GridSlot* SlotTable::Take(std::uint32_t controlId) {
  if (controlId == 0 || Find(controlId) != nullptr) return nullptr;
  const auto free = std::find_if(slots_.rbegin(), slots_.rend(),
                                 [](const GridSlot& slot) { return slot.controlId == 0; });
  if (free == slots_.rend()) return nullptr;
  free->controlId = controlId;
  ++generations_[NumberOf(*free)];
  return &*free;
}

void SlotTable::Release(GridSlot& slot) {
  ResetAfterDestruction(slot);
  ++generations_[NumberOf(slot)];
}

std::size_t SlotTable::InUse() const {
  return static_cast<std::size_t>(std::count_if(
      slots_.begin(), slots_.end(), [](const GridSlot& slot) { return slot.controlId != 0; }));
}

}  // namespace quillgate
