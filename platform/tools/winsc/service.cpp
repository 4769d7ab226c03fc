#include "platform/tools/winsc/service.h"

#include <cstddef>
#include <vector>

namespace platform::winsc {

Service::Service(const std::wstring& name)
    : manager_(::OpenSCManagerW(nullptr, nullptr, SC_MANAGER_CONNECT)),
      service_(::OpenServiceW(manager_.Get(), name.c_str(), SERVICE_ALL_ACCESS)) {
  if (service_.Get() == nullptr) error_ = ::GetLastError();
}

DWORD Service::ErrorOf(BOOL succeeded) const {
  if (service_.Get() == nullptr) return error_;
  return succeeded ? NO_ERROR : ::GetLastError();
}

DWORD Service::Start() const {
  return ErrorOf(::StartServiceW(service_.Get(), 0, nullptr));
}

DWORD Service::Control(DWORD code, SERVICE_STATUS& status) const {
  return ErrorOf(::ControlService(service_.Get(), code, &status));
}

DWORD Service::Query(SERVICE_STATUS_PROCESS& status) const {
  DWORD needed = 0;
  return ErrorOf(::QueryServiceStatusEx(service_.Get(), SC_STATUS_PROCESS_INFO,
                                        reinterpret_cast<LPBYTE>(&status), sizeof status, &needed));
}

DWORD Service::ReadConfig(DWORD& type, DWORD& startType) const {
  DWORD needed = 0;
  ::QueryServiceConfigW(service_.Get(), nullptr, 0, &needed);
  std::vector<QUERY_SERVICE_CONFIGW> buffer(needed / sizeof(QUERY_SERVICE_CONFIGW) + 1);
  const auto bytes = static_cast<DWORD>(buffer.size() * sizeof(QUERY_SERVICE_CONFIGW));
  const DWORD error = ErrorOf(::QueryServiceConfigW(service_.Get(), buffer.data(), bytes, &needed));
  type = buffer.front().dwServiceType;
  startType = buffer.front().dwStartType;
  return error;
}

DWORD Service::Refresh() const {
  return ErrorOf(::ChangeServiceConfigW(service_.Get(), SERVICE_NO_CHANGE, SERVICE_NO_CHANGE,
                                        SERVICE_NO_CHANGE, nullptr, nullptr, nullptr, nullptr,
                                        nullptr, nullptr, nullptr));
}

DWORD Service::Delete() const {
  return ErrorOf(::DeleteService(service_.Get()));
}

}  // namespace platform::winsc
