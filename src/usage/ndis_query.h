// Statistics of network drivers, queried through their devices. A device is opened once for the
// process and stays open: it is queried every few seconds for months, and a handle for each query
// would use up the process's handles. Any thread.
#pragma once

#include <windows.h>

#include <string>

namespace quillgate {

// Queries one NDIS object of the driver whose device is "\\.\" and the service name. Returns 0 or
// the error; `returned` is the number of bytes written, 0 on failure. A device whose driver was
// unloaded since is opened again.
DWORD QueryNdisObject(const std::wstring& serviceName, DWORD objectId, void* buffer, DWORD bytes,
                      DWORD* returned);

}  // namespace quillgate
