#include "platform/kernel/global_memory.h"

#include <algorithm>

#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"

namespace platform {

unsigned GlobalBlock::Unlock() {
  unsigned before = locks_;
  while (before > 0 && !locks_.compare_exchange_weak(before, before - 1)) {
  }
  return before;
}

std::shared_ptr<GlobalBlock> FindGlobalBlock(HGLOBAL handle) {
  auto block = Resolve<GlobalBlock>(HandleKind::kGlobalMemory, handle);
  if (block == nullptr) ::SetLastError(ERROR_INVALID_HANDLE);
  return block;
}

}  // namespace platform

using namespace platform;

HGLOBAL WINAPI GlobalAlloc(UINT flags, SIZE_T bytes) try {
  if (flags != GMEM_MOVEABLE) {
    LogLine("GlobalAlloc: unsupported flags");
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return nullptr;
  }
  const auto block = std::make_shared<GlobalBlock>(std::max<SIZE_T>(bytes, 1));
  return Handles().Insert(HandleKind::kGlobalMemory, block);
} catch (...) {
  return FailedCall<HGLOBAL>(nullptr);
}

LPVOID WINAPI GlobalLock(HGLOBAL memory) try {
  const auto block = FindGlobalBlock(memory);
  if (block == nullptr) return nullptr;
  block->Lock();
  return block->Bytes().data();
} catch (...) {
  return FailedCall<LPVOID>(nullptr);
}

// Whether the block is still locked. As documented, the last error tells the last unlocking from a
// failure.
BOOL WINAPI GlobalUnlock(HGLOBAL memory) try {
  const auto block = FindGlobalBlock(memory);
  if (block == nullptr) return FALSE;
  const unsigned before = block->Unlock();
  if (before > 1) return TRUE;
  ::SetLastError(before == 1 ? NO_ERROR : ERROR_NOT_LOCKED);
  return FALSE;
} catch (...) {
  return FailedCall(FALSE);
}

HGLOBAL WINAPI GlobalFree(HGLOBAL memory) try {
  if (Handles().Remove(HandleKind::kGlobalMemory, memory) != nullptr) return nullptr;
  ::SetLastError(ERROR_INVALID_HANDLE);
  return memory;
} catch (...) {
  return FailedCall(memory);
}
