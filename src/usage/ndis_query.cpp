#include "usage/ndis_query.h"

#include <ntddndis.h>
#include <winioctl.h>

#include <algorithm>
#include <map>

#include "handles/critical_section.h"
#include "handles/handle.h"

namespace quillgate {
namespace {

struct Request {
  DWORD objectId;
  void* buffer;
  DWORD bytes;
  DWORD* returned;
};

DWORD Send(HANDLE device, Request request) {
  *request.returned = 0;
  if (::DeviceIoControl(device, IOCTL_NDIS_QUERY_GLOBAL_STATS, &request.objectId,
                        sizeof(request.objectId), request.buffer, request.bytes, request.returned,
                        nullptr) != FALSE) {
    return NO_ERROR;
  }
  *request.returned = 0;
  return ::GetLastError();
}

// The driver behind the handle was unloaded; a driver of the same name may be loaded again.
bool MeansDeadHandle(DWORD error) {
  constexpr DWORD kErrors[] = {ERROR_INVALID_HANDLE,       ERROR_FILE_NOT_FOUND,
                               ERROR_DEV_NOT_EXIST,        ERROR_OPERATION_ABORTED,
                               ERROR_DEVICE_NOT_CONNECTED, ERROR_DEVICE_REMOVED};
  return std::ranges::find(kErrors, error) != std::end(kErrors);
}

class OpenDevices {
 public:
  DWORD Query(const std::wstring& path, const Request& request) {
    const CriticalSectionLock lock(lock_);
    FileHandle& device = devices_[path];
    if (device.IsValid()) {
      const DWORD error = Send(device.Get(), request);
      if (!MeansDeadHandle(error)) return error;
    }
    device.Reset(
        ::CreateFileW(path.c_str(), 0, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    return device.IsValid() ? Send(device.Get(), request) : ::GetLastError();
  }

 private:
  CriticalSection lock_;
  std::map<std::wstring, FileHandle> devices_;
};

}  // namespace

DWORD QueryNdisObject(const std::wstring& serviceName, DWORD objectId, void* buffer, DWORD bytes,
                      DWORD* returned) {
  static OpenDevices devices;
  *returned = 0;
  return devices.Query(L"\\\\.\\" + serviceName, {objectId, buffer, bytes, returned});
}

}  // namespace quillgate
