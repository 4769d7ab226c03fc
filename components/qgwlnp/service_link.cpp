#include "service_link.h"

#include <vector>

#include "event_report.h"

namespace quillgate::notifier {
namespace {

constexpr wchar_t kServiceName[] = L"qgserv";
constexpr DWORD kRetryMilliseconds = 100;
constexpr DWORD kLongestMilliseconds = 30'000;

// The folder in the path of the service's program, which has neither quotation marks nor arguments;
// empty when the path cannot be read.
std::wstring ProgramFolder(SC_HANDLE service) {
  DWORD bytes = 0;
  ::QueryServiceConfigW(service, nullptr, 0, &bytes);
  std::vector<QUERY_SERVICE_CONFIGW> config(bytes / sizeof(QUERY_SERVICE_CONFIGW) + 1);
  const auto size = static_cast<DWORD>(config.size() * sizeof(QUERY_SERVICE_CONFIGW));
  if (!::QueryServiceConfigW(service, config.data(), size, &bytes)) return {};
  std::wstring path = config.front().lpBinaryPathName;
  path.resize(path.rfind(L'\\') + 1);
  return path;
}

DWORD ErrorOfControl(SC_HANDLE service, DWORD control) {
  SERVICE_STATUS status{};
  return ::ControlService(service, control, &status) ? ERROR_SUCCESS : ::GetLastError();
}

}  // namespace

ServiceLink::ServiceLink()
    : manager_(::OpenSCManagerW(nullptr, nullptr, SC_MANAGER_CONNECT)),
      service_(::OpenServiceW(manager_, kServiceName,
                              SERVICE_QUERY_CONFIG | SERVICE_USER_DEFINED_CONTROL)) {
  if (service_ != nullptr) folder_ = ProgramFolder(service_);
}

ServiceLink::~ServiceLink() {
  if (service_ != nullptr) ::CloseServiceHandle(service_);
  if (manager_ != nullptr) ::CloseServiceHandle(manager_);
}

void ServiceLink::Send(DWORD control) const {
  const DWORD start = ::GetTickCount();
  DWORD error = ErrorOfControl(service_, control);
  while (error == ERROR_SERVICE_CANNOT_ACCEPT_CTRL &&
         ::GetTickCount() - start < kLongestMilliseconds) {
    ::Sleep(kRetryMilliseconds);
    error = ErrorOfControl(service_, control);
  }
  if (error == ERROR_SUCCESS || error == ERROR_SERVICE_NOT_ACTIVE) return;
  LogEvent(L"The service cannot be notified of a logon or a log-off. Error=" +
           std::to_wstring(error));
}

}  // namespace quillgate::notifier
