#include "package_exports.h"

#include <exception>
#include <string>

#include "event_report.h"
#include "package_key.h"
#include "service_link.h"
#include "user_record.h"

namespace {

using quillgate::notifier::LogEvent;
using quillgate::notifier::ServiceLink;
using quillgate::notifier::UserRecord;

// Controls of the service.
constexpr DWORD kLoggedOn = 128;
constexpr DWORD kLoggedOff = 129;

// Without a service there is no database and nobody to notify.
template <class Work>
void WithService(Work work) noexcept {
  try {
    const ServiceLink service;
    if (service.IsInstalled()) work(service);
  } catch (const std::exception&) {
    LogEvent(L"An event of the logon process was not handled.");
  }
}

// True when it was done; false, with an event in the log, when the database did not allow it.
bool IsDone(const std::string& failure) {
  if (failure.empty()) return true;
  LogEvent(L"The name of the user who is logged on cannot be stored: " +
           quillgate::notifier::Widen(failure));
  return false;
}

}  // namespace

void WINAPI WLEventStartup(PWLX_NOTIFICATION_INFO) noexcept {
  WithService([](const ServiceLink& service) { IsDone(UserRecord(service.Folder()).Remove()); });
}

void WINAPI WLEventLogon(PWLX_NOTIFICATION_INFO info) noexcept {
  WithService([info](const ServiceLink& service) {
    const std::wstring name = info->UserName == nullptr ? L"" : info->UserName;
    const bool isStored = IsDone(UserRecord(service.Folder()).Store(name));
    service.Send(isStored ? kLoggedOn : kLoggedOff);
  });
}

// The service first: a connection does not stay open because the database is in use. And again: a
// service that has started meanwhile has read the name.
void WINAPI WLEventLogoff(PWLX_NOTIFICATION_INFO) noexcept {
  WithService([](const ServiceLink& service) {
    service.Send(kLoggedOff);
    IsDone(UserRecord(service.Folder()).Remove());
    service.Send(kLoggedOff);
  });
}

HRESULT WINAPI DllRegisterServer() noexcept {
  HRESULT result = E_FAIL;
  WithService([&result](const ServiceLink& service) {
    if (quillgate::notifier::RegisterPackage(service.Folder())) result = S_OK;
  });
  return result;
}

HRESULT WINAPI DllUnregisterServer() noexcept {
  return quillgate::notifier::UnregisterPackage() ? S_OK : E_FAIL;
}
