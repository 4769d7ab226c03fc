// Whether the kernel's nf_tables is there for this process, in its network namespace. Any thread.
#pragma once

#include <windef.h>

namespace platform {

// 0; ERROR_FILE_NOT_FOUND: the kernel has no nf_tables; ERROR_ACCESS_DENIED: no right to use it.
DWORD AskPacketFilter();

}  // namespace platform
