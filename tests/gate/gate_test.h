// What the tests of this folder share: a machine of their own and its service records.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <winsvc.h>

#include <optional>
#include <string>
#include <vector>

#include "handles/handle.h"
#include "platform/testing/simulated_machine.h"

namespace quillgate {

struct ServiceRecord {
  DWORD type;
  DWORD startType;
  DWORD errorControl;
  DWORD state;
  std::wstring file;
  std::wstring displayName;
};

class GateTest : public testing::Test {
 protected:
  static ServiceHandle Manager() {
    return ServiceHandle(::OpenSCManagerW(nullptr, nullptr, SC_MANAGER_ALL_ACCESS));
  }
  static ServiceHandle Service(const std::wstring& name) {
    return ServiceHandle(::OpenServiceW(Manager().Get(), name.c_str(), SERVICE_ALL_ACCESS));
  }

  // Nothing when there is no such service.
  static std::optional<ServiceRecord> Record(const std::wstring& name) {
    const ServiceHandle service = Service(name);
    DWORD bytes = 0;
    ::QueryServiceConfigW(service.Get(), nullptr, 0, &bytes);
    if (bytes == 0) return std::nullopt;
    std::vector<QUERY_SERVICE_CONFIGW> buffer(bytes / sizeof(QUERY_SERVICE_CONFIGW) + 1);
    SERVICE_STATUS status{};
    if (!::QueryServiceConfigW(service.Get(), buffer.data(), bytes, &bytes) ||
        !::QueryServiceStatus(service.Get(), &status)) {
      return std::nullopt;
    }
    const QUERY_SERVICE_CONFIGW& config = buffer.front();
    return ServiceRecord{config.dwServiceType,  config.dwStartType,      config.dwErrorControl,
                         status.dwCurrentState, config.lpBinaryPathName, config.lpDisplayName};
  }

  static void Register(const std::wstring& name, const std::wstring& displayName, DWORD startType,
                       const std::wstring& file) {
    const ServiceHandle service(::CreateServiceW(Manager().Get(), name.c_str(), displayName.c_str(),
                                                 SERVICE_ALL_ACCESS, SERVICE_KERNEL_DRIVER,
                                                 startType, SERVICE_ERROR_NORMAL, file.c_str(),
                                                 nullptr, nullptr, nullptr, nullptr, nullptr));
    ASSERT_TRUE(service.IsValid());
  }
  static void Unregister(const std::wstring& name) {
    ASSERT_TRUE(::DeleteService(Service(name).Get()));
  }
  static void StartDriverService(const std::wstring& name) {
    ASSERT_TRUE(::StartServiceW(Service(name).Get(), 0, nullptr));
  }
  static void StopDriverService(const std::wstring& name) {
    SERVICE_STATUS status{};
    ASSERT_TRUE(::ControlService(Service(name).Get(), SERVICE_CONTROL_STOP, &status));
  }

  platform::SimulatedMachine machine_;
};

}  // namespace quillgate
