// What the service control manager keeps of a service, and changes to it as an administrator makes
// them.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <winsvc.h>

#include <optional>
#include <string>
#include <vector>

#include "handles/handle.h"

namespace quillgate {

struct ServiceRecord {
  DWORD type;
  DWORD startType;
  DWORD errorControl;
  DWORD state;
  std::wstring file;
  std::wstring displayName;
};

inline ServiceHandle OpenManager() {
  return ServiceHandle(::OpenSCManagerW(nullptr, nullptr, SC_MANAGER_ALL_ACCESS));
}
inline ServiceHandle OpenService(const std::wstring& name) {
  return ServiceHandle(::OpenServiceW(OpenManager().Get(), name.c_str(), SERVICE_ALL_ACCESS));
}

// Nothing when there is no such service.
inline std::optional<ServiceRecord> Record(const std::wstring& name) {
  const ServiceHandle service = OpenService(name);
  std::vector<QUERY_SERVICE_CONFIGW> buffer(50);
  QUERY_SERVICE_CONFIGW& config = buffer.front();
  DWORD bytes = static_cast<DWORD>(buffer.size() * sizeof(config));
  SERVICE_STATUS status{};
  if (!::QueryServiceConfigW(service.Get(), &config, bytes, &bytes) ||
      !::QueryServiceStatus(service.Get(), &status)) {
    return std::nullopt;
  }
  return ServiceRecord{config.dwServiceType,  config.dwStartType,      config.dwErrorControl,
                       status.dwCurrentState, config.lpBinaryPathName, config.lpDisplayName};
}

// A driver's service that starts with the system.
inline void Register(const std::wstring& name, const std::wstring& displayName,
                     const std::wstring& file) {
  const ServiceHandle service(
      ::CreateServiceW(OpenManager().Get(), name.c_str(), displayName.c_str(), SERVICE_ALL_ACCESS,
                       SERVICE_KERNEL_DRIVER, SERVICE_SYSTEM_START, SERVICE_ERROR_NORMAL,
                       file.c_str(), nullptr, nullptr, nullptr, nullptr, nullptr));
  ASSERT_TRUE(service.IsValid());
}

}  // namespace quillgate
