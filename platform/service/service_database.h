// The records of the services, kept in the registry where Windows keeps them:
// SYSTEM\CurrentControlSet\Services\NAME. Any thread; an object is used by one.
#pragma once

#include <windef.h>

#include <string>
#include <string_view>
#include <vector>

#include "platform/kernel/file_descriptor.h"

namespace platform {

struct ServiceRecord {
  std::wstring name;  // as it was created; compared without case
  DWORD type = 0;
  DWORD startType = 0;
  DWORD errorControl = 0;
  std::wstring imagePath;
  std::wstring displayName;
  bool markedForDeletion = false;  // gone as soon as the service has stopped
};

// Holds the lock between processes while it lives, so that what is read and then written is one
// step. Errors are Win32 codes, 0 is success.
class ServiceDatabase {
 public:
  ServiceDatabase();

  // 0, or why the records cannot be reached; every other call answers the same then.
  DWORD Error() const { return error_; }

  // ERROR_SERVICE_DOES_NOT_EXIST also for a key that is no complete record. A record that is
  // marked for deletion and whose service has stopped is removed here.
  DWORD Read(std::wstring_view name, ServiceRecord& record);
  DWORD Write(const ServiceRecord& record);
  // As Write, but what an incomplete record may have left is removed first.
  DWORD Create(const ServiceRecord& record);

  // Removes the record, or marks it when the service runs. ERROR_SERVICE_MARKED_FOR_DELETE when it
  // is marked already.
  DWORD Delete(std::wstring_view name);

  // Every complete record, in the order of the registry.
  std::vector<ServiceRecord> All();

 private:
  DWORD Erase(std::wstring_view name);

  FileDescriptor lock_;
  DWORD error_ = 0;
};

}  // namespace platform
