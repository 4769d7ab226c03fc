// A handle of the system's that closes itself. None is null, so a file is only given to it once it
// is known to be open.
#pragma once

#include <windows.h>

#include <memory>

namespace quillgate::engine {

struct HandleCloser {
  void operator()(HANDLE handle) const { ::CloseHandle(handle); }
};
using SystemHandle = std::unique_ptr<void, HandleCloser>;

}  // namespace quillgate::engine
