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
  // Opens the service. The other functions require that Error() is 0. Errors are Win32 codes, 0 is
  // success.
  explicit Service(const std::wstring& name);
  DWORD Error() const { return error_; }

  DWORD Start() const;
  DWORD Control(DWORD code, SERVICE_STATUS& status) const;
  DWORD Query(SERVICE_STATUS_PROCESS& status) const;
  DWORD ReadConfig(DWORD& type, DWORD& startType) const;
  // Configures the service as it is configured.
  DWORD Refresh() const;
  // Removes it, when it has stopped at the latest.
  DWORD Delete() const;

 private:
  ServiceHandle manager_;
  ServiceHandle service_;
  DWORD error_ = 0;
};

}  // namespace platform::winsc
