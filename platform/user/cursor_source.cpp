#include "platform/user/cursor_source.h"

#include <mutex>

namespace platform {
namespace {

struct SourceSlot {
  std::mutex mutex;
  CursorSource source;
};

SourceSlot& Slot() {
  static SourceSlot& slot = *new SourceSlot;
  return slot;
}

}  // namespace

void SetCursorSource(CursorSource source) {
  SourceSlot& slot = Slot();
  const std::lock_guard lock(slot.mutex);
  slot.source = std::move(source);
}

CursorSource CurrentCursorSource() {
  SourceSlot& slot = Slot();
  const std::lock_guard lock(slot.mutex);
  return slot.source;
}

}  // namespace platform
