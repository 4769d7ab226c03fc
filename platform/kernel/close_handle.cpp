#include <windows.h>

#include "platform/kernel/api_result.h"
#include "platform/kernel/handle_table.h"

namespace {

// The other kinds have closing functions of their own.
bool IsClosable(platform::HandleKind kind) {
  using platform::HandleKind;
  return kind == HandleKind::kThread || kind == HandleKind::kMutex || kind == HandleKind::kDevice;
}

}  // namespace

extern "C" BOOL WINAPI CloseHandle(HANDLE object) try {
  platform::HandleKind kind{};
  if (platform::Handles().KindOf(object, kind) && IsClosable(kind) &&
      platform::Handles().Remove(kind, object) != nullptr) {
    return TRUE;
  }
  ::SetLastError(ERROR_INVALID_HANDLE);
  return FALSE;
} catch (...) {
  return platform::FailedCall(FALSE);
}
