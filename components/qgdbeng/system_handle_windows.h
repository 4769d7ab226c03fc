// An owning handle of the system that closes itself. No handle is null, so the result of
// CreateFileW must be checked for INVALID_HANDLE_VALUE first.
#pragma once

#include <windows.h>

#include <memory>

namespace quillgate::engine {

struct HandleCloser {
  void operator()(HANDLE handle) const { ::CloseHandle(handle); }
};
using SystemHandle = std::unique_ptr<void, HandleCloser>;

}  // namespace quillgate::engine
