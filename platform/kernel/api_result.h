// How an API function returns: no exception leaves it, and an error code becomes its return value
// and the last error. Any thread.
#pragma once

#include <windows.h>

namespace platform {

// The error code of the exception that is being handled. To be called in the catch (...) around the
// body of every API function. ERROR_NOT_ENOUGH_MEMORY for std::bad_alloc; else ERROR_GEN_FAILURE,
// and the text of a std::exception goes to the log.
DWORD ErrorOfException() noexcept;

// The same for a function that reports failure by a return value: sets the last error and returns
// `failure`.
template <class Result>
Result FailedCall(Result failure) noexcept {
  ::SetLastError(ErrorOfException());
  return failure;
}

// The BOOL that an API function returns for that error. Success leaves the last error unchanged.
inline BOOL BoolResult(DWORD error) {
  if (error != NO_ERROR) ::SetLastError(error);
  return error == NO_ERROR ? TRUE : FALSE;
}

// The same for a function that returns a handle: `none` when there was an error.
template <class Handle>
Handle HandleResult(DWORD error, Handle handle, Handle none) {
  return BoolResult(error) ? handle : none;
}

}  // namespace platform
