// One service, opened through the service control manager. Main thread.
#pragma once

#include <windows.h>
#include <winsvc.h>

#include <string>
#include <utility>

namespace platform::winsc {

class ServiceHandle {
 public:
  explicit ServiceHandle(SC_HANDLE handle = nullptr) : handle_(handle) {}
  ServiceHandle(ServiceHandle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
  ServiceHandle& operator=(ServiceHandle&&) = delete;
  ~ServiceHandle() {
    if (handle_ != nullptr) ::CloseServiceHandle(handle_);
  }

  SC_HANDLE Get() const { return handle_; }

 private:
  SC_HANDLE handle_;
};

class Service {
 public:
  // Opens the service. The functions answer Win32 codes, 0 is success; the code of the opening when
  // that has failed.
  explicit Service(const std::wstring& name);

  DWORD Start() const;
  DWORD Control(DWORD code, SERVICE_STATUS& status) const;
  DWORD Query(SERVICE_STATUS_PROCESS& status) const;
  DWORD ReadConfig(DWORD& type, DWORD& startType) const;
  // Configures the service as it is configured.
  DWORD Refresh() const;
  // Removes it, when it has stopped at the latest.
  DWORD Delete() const;

 private:
  // Of a call with the service's handle, which fails when that is null.
  DWORD ErrorOf(BOOL succeeded) const;

  ServiceHandle manager_;
  ServiceHandle service_;
  DWORD error_ = 0;
};

}  // namespace platform::winsc
