// The records of the services, in the registry at the same path as on Windows:
// SYSTEM\CurrentControlSet\Services\NAME. Any thread; each object is used by one thread.
#pragma once

#include <winsvc.h>

#include <string>
#include <string_view>
#include <vector>

#include "platform/kernel/file_descriptor.h"

namespace platform {

// Whether a service of that type is a driver, which has no process of its own.
inline bool IsDriver(DWORD type) {
  return type == SERVICE_KERNEL_DRIVER;
}

struct ServiceRecord {
  std::wstring name;  // compared case-insensitively
  DWORD type = 0;
  DWORD startType = 0;
  DWORD errorControl = 0;
  std::wstring imagePath;
  std::wstring displayName;
  bool markedForDeletion = false;  // to be removed when the service has stopped
};

// An object holds the lock between processes while it lives, so that a read and the write after it
// are atomic. Errors are Win32 codes, 0 is success.
class ServiceDatabase {
 public:
  ServiceDatabase();

  // 0, or the error with which opening the database failed. Every other function then returns it
  // too; All returns no records.
  DWORD Error() const { return error_; }

  // ERROR_SERVICE_DOES_NOT_EXIST also when the record is incomplete. Removes a record that is
  // marked for deletion and whose service has stopped.
  DWORD Read(std::wstring_view name, ServiceRecord& record);
  DWORD Write(const ServiceRecord& record);
  // As Write, but removes the remains of an incomplete record first.
  DWORD Create(const ServiceRecord& record);

  // Removes the record, or marks it for deletion when the service is not stopped.
  // ERROR_SERVICE_MARKED_FOR_DELETE when it is already marked.
  DWORD Delete(std::wstring_view name);

  // Every complete record, in the order of RegEnumKeyExW.
  std::vector<ServiceRecord> All();

 private:
  DWORD Erase(std::wstring_view name);

  FileDescriptor lock_;
  DWORD error_ = 0;
};

}  // namespace platform
