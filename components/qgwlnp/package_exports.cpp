#include "package_exports.h"

#include <chrono>
#include <exception>
#include <string>
#include <utility>

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

constexpr std::chrono::minutes kLongestLogon{1};
constexpr std::chrono::seconds kNotificationInterval{1};

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

void LogRefusal(const std::string& failure) {
  LogEvent(L"The name of the user who is logged on cannot be stored or removed: " +
           quillgate::notifier::Widen(failure));
}

// A name that stayed would be taken for that of the next person, so there is no limit. Meanwhile
// the service is notified again and again: whatever makes it read the name, nobody is logged on.
void RemoveName(const ServiceLink& service) {
  const UserRecord record(service.Folder());
  bool hasFailed = false;
  for (;;) {
    const std::string failure = record.Remove(kNotificationInterval);
    if (!failure.empty() && !std::exchange(hasFailed, true)) LogRefusal(failure);
    if (hasFailed) service.Send(kLoggedOff);
    if (failure.empty()) return;
  }
}

}  // namespace

void WINAPI WLEventStartup(PWLX_NOTIFICATION_INFO) noexcept {
  WithService(RemoveName);
}

void WINAPI WLEventLogon(PWLX_NOTIFICATION_INFO info) noexcept {
  WithService([info](const ServiceLink& service) {
    const std::wstring name = info->UserName == nullptr ? L"" : info->UserName;
    const std::string failure = UserRecord(service.Folder()).Store(name, kLongestLogon);
    if (!failure.empty()) LogRefusal(failure);
    service.Send(failure.empty() ? kLoggedOn : kLoggedOff);
  });
}

// The service first: a connection does not stay open because the database is in use. And again: a
// service that has started meanwhile has read the name.
void WINAPI WLEventLogoff(PWLX_NOTIFICATION_INFO) noexcept {
  WithService([](const ServiceLink& service) {
    service.Send(kLoggedOff);
    RemoveName(service);
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
