// The last step of an API function: an error code becomes its return value and the last error, and
// nothing that is thrown gets out. Any thread.
#pragma once

#include <windows.h>

#include <new>
#include <utility>

namespace platform {

// What `body` answers, an error code or 0; ERROR_NOT_ENOUGH_MEMORY or ERROR_GEN_FAILURE when it
// throws.
template <class Body>
DWORD Guarded(Body&& body) noexcept {
  try {
    return std::forward<Body>(body)();
  } catch (const std::bad_alloc&) {
    return ERROR_NOT_ENOUGH_MEMORY;
  } catch (...) {
    return ERROR_GEN_FAILURE;
  }
}

// The BOOL of an API function that ended with that error. A success leaves the last error alone.
inline BOOL BoolResult(DWORD error) {
  if (error != NO_ERROR) ::SetLastError(error);
  return error == NO_ERROR ? TRUE : FALSE;
}

// The handle of such a function: `none` when there was an error.
template <class Handle>
Handle HandleResult(DWORD error, Handle handle, Handle none) {
  return BoolResult(error) ? handle : none;
}

}  // namespace platform
