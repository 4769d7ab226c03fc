#include "platform/kernel/handle_table.h"

#include <utility>

namespace platform {
namespace {

// The two low bits are zero, as Win32 documents; then follow the slot and the generation. Twenty
// bits of slots are more than any process of ours can use.
constexpr unsigned kSlotShift = 2;
constexpr unsigned kSlotBits = 20;
constexpr std::uintptr_t kSlotMask = (std::uintptr_t{1} << kSlotBits) - 1;
constexpr unsigned kGenerationShift = kSlotShift + kSlotBits;
constexpr std::uint32_t kLastGeneration = 0x7FFFFFFF;

void* Encode(std::uint32_t slot, std::uint32_t generation) {
  return reinterpret_cast<void*>((std::uintptr_t{generation} << kGenerationShift) |
                                 (std::uintptr_t{slot} << kSlotShift));
}

}  // namespace

void* HandleTable::Insert(HandleKind kind, std::shared_ptr<Object> object) {
  const std::lock_guard lock(mutex_);
  std::uint32_t index = 0;
  if (freeSlots_.empty()) {
    index = static_cast<std::uint32_t>(slots_.size());
    slots_.emplace_back();
  } else {
    index = freeSlots_.back();
    freeSlots_.pop_back();
  }
  Slot& slot = slots_[index];
  slot.object = std::move(object);
  slot.kind = kind;
  return Encode(index, slot.generation);
}

const HandleTable::Slot* HandleTable::Locate(const void* handle) const {
  const auto value = reinterpret_cast<std::uintptr_t>(handle);
  const std::uintptr_t index = (value >> kSlotShift) & kSlotMask;
  if ((value & ((1u << kSlotShift) - 1)) != 0 || index >= slots_.size()) return nullptr;
  const Slot& slot = slots_[index];
  const bool current = (value >> kGenerationShift) == slot.generation;
  return current && slot.object != nullptr ? &slot : nullptr;
}

std::shared_ptr<Object> HandleTable::Find(HandleKind kind, const void* handle) const {
  const std::lock_guard lock(mutex_);
  const Slot* slot = Locate(handle);
  return slot != nullptr && slot->kind == kind ? slot->object : nullptr;
}

std::shared_ptr<Object> HandleTable::FindAny(const void* handle, HandleKind& kind) const {
  const std::lock_guard lock(mutex_);
  const Slot* slot = Locate(handle);
  if (slot == nullptr) return nullptr;
  kind = slot->kind;
  return slot->object;
}

std::shared_ptr<Object> HandleTable::Remove(HandleKind kind, const void* handle) {
  const std::lock_guard lock(mutex_);
  const Slot* found = Locate(handle);
  if (found == nullptr || found->kind != kind) return nullptr;
  const auto index = static_cast<std::uint32_t>(found - slots_.data());
  Slot& slot = slots_[index];
  slot.generation = slot.generation == kLastGeneration ? 1 : slot.generation + 1;
  freeSlots_.push_back(index);
  return std::exchange(slot.object, nullptr);
}

bool HandleTable::KindOf(const void* handle, HandleKind& kind) const {
  const std::lock_guard lock(mutex_);
  const Slot* slot = Locate(handle);
  if (slot == nullptr) return false;
  kind = slot->kind;
  return true;
}

std::size_t HandleTable::Count() const {
  const std::lock_guard lock(mutex_);
  return slots_.size() - freeSlots_.size();
}

HandleTable& Handles() {
  // Never destroyed: handles may be used by threads and destructors that outlive static objects.
  static HandleTable& table = *new HandleTable;
  return table;
}

}  // namespace platform
