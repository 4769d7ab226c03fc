// Statistics of network drivers, read through their devices. A device is opened once for the
// process and stays open: it is read every few seconds for months, and a handle for each reading
// would use up the process's handles. Any thread.
#pragma once

#include <windows.h>

#include <string>

namespace quillgate {

// One NDIS object of the driver whose device is "\\.\" and the service name. 0 or the error;
// `returned` is the number of bytes written, 0 on failure. A device whose driver has gone away
// since it was opened is opened again.
DWORD QueryNdisObject(const std::wstring& serviceName, DWORD objectId, void* buffer, DWORD bytes,
                      DWORD* returned);

}  // namespace quillgate
