// The edge of an API function: what was thrown inside ends there, and error codes become its return
// value and the last error. Any thread.
#pragma once

#include <windows.h>

namespace platform {

// For the catch (...) around the body of every API function: the error that stands for what was
// thrown, ERROR_NOT_ENOUGH_MEMORY or ERROR_GEN_FAILURE with a line in the log.
DWORD ErrorOfException() noexcept;

// The same for a function that tells its failure by a value and the last error.
template <class Result>
Result FailedCall(Result failure) noexcept {
  ::SetLastError(ErrorOfException());
  return failure;
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
