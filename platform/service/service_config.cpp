// The configuration of services: CreateServiceW, ChangeServiceConfigW, QueryServiceConfigW.
#include <windows.h>
#include <winsvc.h>

#include <algorithm>
#include <string>

#include "platform/kernel/api_result.h"
#include "platform/kernel/encoding.h"
#include "platform/kernel/log.h"
#include "platform/service/service_database.h"
#include "platform/service/service_files.h"
#include "platform/service/service_handle.h"
#include "platform/service/service_keeper.h"

namespace platform {
namespace {

constexpr std::wstring_view kSystemAccount = L"LocalSystem";
constexpr DWORD kLastErrorControl = 3;  // SERVICE_ERROR_CRITICAL

// The parameters of CreateServiceW that are supported on Windows and not here.
struct Extras {
  LPCWSTR loadOrderGroup;
  LPDWORD tagId;
  LPCWSTR dependencies;
  LPCWSTR account;
};

bool IsEmpty(LPCWSTR text) {
  return text == nullptr || *text == L'\0';
}

DWORD CheckExtras(const Extras& extras) {
  if (!IsEmpty(extras.account) && !EqualNames(extras.account, kSystemAccount)) {
    LogLine("services run under the system's account only");
    return ERROR_INVALID_SERVICE_ACCOUNT;
  }
  if (IsEmpty(extras.loadOrderGroup) && extras.tagId == nullptr && IsEmpty(extras.dependencies)) {
    return NO_ERROR;
  }
  LogLine("services have no load order, tags or dependencies");
  return ERROR_INVALID_PARAMETER;
}

bool IsSupportedType(DWORD type) {
  return IsDriver(type) || (type & ~SERVICE_INTERACTIVE_PROCESS) == SERVICE_WIN32_OWN_PROCESS;
}

// Only drivers can have the start types boot and system.
bool IsValidStart(DWORD startType, DWORD type) {
  const DWORD first = IsDriver(type) ? SERVICE_BOOT_START : SERVICE_AUTO_START;
  return startType >= first && startType <= SERVICE_DISABLED;
}

DWORD CheckRecord(const ServiceRecord& record) {
  if (!IsSupportedType(record.type)) {
    LogLine("services are drivers or have a process of their own; another type is not supported");
    return ERROR_INVALID_PARAMETER;
  }
  const bool valid = IsValidStart(record.startType, record.type) &&
                     record.errorControl <= kLastErrorControl && !record.imagePath.empty();
  return valid ? NO_ERROR : ERROR_INVALID_PARAMETER;
}

// A display name must not be another service's name or display name.
DWORD CheckDisplayName(ServiceDatabase& database, const ServiceRecord& record) {
  const std::vector<ServiceRecord> all = database.All();
  const bool taken = std::ranges::any_of(all, [&record](const ServiceRecord& other) {
    return !EqualNames(other.name, record.name) &&
           (EqualNames(other.displayName, record.displayName) ||
            EqualNames(other.name, record.displayName));
  });
  return taken ? ERROR_DUPLICATE_SERVICE_NAME : NO_ERROR;
}

DWORD AddRecord(const ServiceRecord& record) {
  ServiceDatabase database;
  ServiceRecord existing;
  DWORD error = database.Read(record.name, existing);
  if (error == NO_ERROR) {
    return existing.markedForDeletion ? ERROR_SERVICE_MARKED_FOR_DELETE : ERROR_SERVICE_EXISTS;
  }
  if (error != ERROR_SERVICE_DOES_NOT_EXIST) return error;
  error = CheckDisplayName(database, record);
  if (error == NO_ERROR) error = database.Create(record);
  if (error != NO_ERROR || IsDriver(record.type)) return error;
  error = CurrentKeeper()->Configure(record, true);
  if (error != NO_ERROR) database.Delete(record.name);
  return error;
}

DWORD Create(SC_HANDLE managerHandle, const ServiceRecord& record, const Extras& extras,
             DWORD access, SC_HANDLE& handle) {
  std::shared_ptr<ManagerObject> manager;
  DWORD error = FindManager(managerHandle, SC_MANAGER_CREATE_SERVICE, manager);
  if (error != NO_ERROR) return error;
  if (!IsServiceName(record.name)) return ERROR_INVALID_NAME;
  if ((access & ~SERVICE_ALL_ACCESS) != 0) return ERROR_ACCESS_DENIED;
  error = CheckExtras(extras);
  if (error == NO_ERROR) error = CheckRecord(record);
  if (error == NO_ERROR) error = AddRecord(record);
  if (error == NO_ERROR) handle = NewServiceHandle(record.name, record.type, access);
  return error;
}

// The parameters of ChangeServiceConfigW; SERVICE_NO_CHANGE and null leave a value unchanged.
struct Changes {
  DWORD type;
  DWORD startType;
  DWORD errorControl;
  LPCWSTR imagePath;
  LPCWSTR displayName;
};

void Apply(const Changes& changes, ServiceRecord& record) {
  if (changes.type != SERVICE_NO_CHANGE) record.type = changes.type;
  if (changes.startType != SERVICE_NO_CHANGE) record.startType = changes.startType;
  if (changes.errorControl != SERVICE_NO_CHANGE) record.errorControl = changes.errorControl;
  if (changes.imagePath != nullptr) record.imagePath = changes.imagePath;
  if (changes.displayName != nullptr) record.displayName = changes.displayName;
}

// The record of the service of an open handle; ERROR_SERVICE_MARKED_FOR_DELETE when the service has
// been deleted.
DWORD ReadOpened(ServiceDatabase& database, const ServiceObject& service, ServiceRecord& record) {
  const DWORD error = database.Read(service.name, record);
  return error == ERROR_SERVICE_DOES_NOT_EXIST ? ERROR_SERVICE_MARKED_FOR_DELETE : error;
}

// Drivers have no keeper.
DWORD TellKeeper(const ServiceRecord& before, const ServiceRecord& now) {
  const bool hasNewStartType = IsDriver(before.type) || before.startType != now.startType;
  if (!IsDriver(now.type)) return CurrentKeeper()->Configure(now, hasNewStartType);
  return IsDriver(before.type) ? NO_ERROR : CurrentKeeper()->Remove(now.name);
}

DWORD Change(SC_HANDLE handle, const Changes& changes, const Extras& extras) {
  std::shared_ptr<ServiceObject> service;
  DWORD error = FindService(handle, SERVICE_CHANGE_CONFIG, service);
  if (error == NO_ERROR) error = CheckExtras(extras);
  if (error != NO_ERROR) return error;
  ServiceDatabase database;
  ServiceRecord record;
  error = ReadOpened(database, *service, record);
  if (error != NO_ERROR) return error;
  if (record.markedForDeletion) return ERROR_SERVICE_MARKED_FOR_DELETE;
  const ServiceRecord before = record;
  Apply(changes, record);
  error = CheckRecord(record);
  if (error == NO_ERROR) error = CheckDisplayName(database, record);
  if (error == NO_ERROR) error = database.Write(record);
  if (error != NO_ERROR) return error;
  error = TellKeeper(before, record);
  if (error != NO_ERROR) database.Write(before);
  return error;
}

// Appends texts to the caller's buffer, after the structure that points to them.
class TextArea {
 public:
  explicit TextArea(void* start) : next_(static_cast<wchar_t*>(start)) {}
  LPWSTR Append(std::wstring_view text) {
    const LPWSTR start = next_;
    next_ = std::ranges::copy(text, next_).out;
    *next_++ = L'\0';
    return start;
  }

 private:
  wchar_t* next_;
};

void Fill(QUERY_SERVICE_CONFIGW& config, const ServiceRecord& record, std::wstring_view account) {
  TextArea texts(&config + 1);
  config.dwServiceType = record.type;
  config.dwStartType = record.startType;
  config.dwErrorControl = record.errorControl;
  config.lpBinaryPathName = texts.Append(record.imagePath);
  config.lpLoadOrderGroup = texts.Append({});
  config.dwTagId = 0;
  // An empty list, which is only its terminating empty string.
  config.lpDependencies = texts.Append({});
  config.lpServiceStartName = texts.Append(account);
  config.lpDisplayName = texts.Append(record.displayName);
}

DWORD Query(SC_HANDLE handle, LPQUERY_SERVICE_CONFIGW config, DWORD bytes, LPDWORD bytesNeeded) {
  std::shared_ptr<ServiceObject> service;
  DWORD error = FindService(handle, SERVICE_QUERY_CONFIG, service);
  if (error != NO_ERROR) return error;
  if (bytesNeeded == nullptr || (config == nullptr && bytes != 0)) return ERROR_INVALID_PARAMETER;
  ServiceDatabase database;
  ServiceRecord record;
  error = ReadOpened(database, *service, record);
  if (error != NO_ERROR) return error;
  const std::wstring_view account = IsDriver(record.type) ? std::wstring_view() : kSystemAccount;
  constexpr std::size_t kTerminators = 5;
  const std::size_t characters =
      record.imagePath.size() + record.displayName.size() + account.size() + kTerminators;
  *bytesNeeded = static_cast<DWORD>(sizeof *config + characters * sizeof(wchar_t));
  if (bytes < *bytesNeeded) return ERROR_INSUFFICIENT_BUFFER;
  Fill(*config, record, account);
  return NO_ERROR;
}

}  // namespace
}  // namespace platform

extern "C" {

SC_HANDLE WINAPI CreateServiceW(SC_HANDLE manager, LPCWSTR serviceName, LPCWSTR displayName,
                                DWORD access, DWORD serviceType, DWORD startType,
                                DWORD errorControl, LPCWSTR binaryPath, LPCWSTR loadOrderGroup,
                                LPDWORD tagId, LPCWSTR dependencies, LPCWSTR account, LPCWSTR) try {
  SC_HANDLE handle = nullptr;
  DWORD error = ERROR_INVALID_PARAMETER;
  if (serviceName != nullptr && binaryPath != nullptr) {
    platform::ServiceRecord record;
    record.name = serviceName;
    record.type = serviceType;
    record.startType = startType;
    record.errorControl = errorControl;
    record.imagePath = binaryPath;
    record.displayName = platform::IsEmpty(displayName) ? serviceName : displayName;
    const platform::Extras extras{loadOrderGroup, tagId, dependencies, account};
    error = platform::Create(manager, record, extras, access, handle);
  }
  return platform::HandleResult<SC_HANDLE>(error, handle, nullptr);
} catch (...) {
  return platform::FailedCall<SC_HANDLE>(nullptr);
}

BOOL WINAPI ChangeServiceConfigW(SC_HANDLE service, DWORD serviceType, DWORD startType,
                                 DWORD errorControl, LPCWSTR binaryPath, LPCWSTR loadOrderGroup,
                                 LPDWORD tagId, LPCWSTR dependencies, LPCWSTR account, LPCWSTR,
                                 LPCWSTR displayName) try {
  const platform::Changes changes{serviceType, startType, errorControl, binaryPath, displayName};
  const platform::Extras extras{loadOrderGroup, tagId, dependencies, account};
  return platform::BoolResult(platform::Change(service, changes, extras));
} catch (...) {
  return platform::FailedCall(FALSE);
}

BOOL WINAPI QueryServiceConfigW(SC_HANDLE service, LPQUERY_SERVICE_CONFIGW config, DWORD bytes,
                                LPDWORD bytesNeeded) try {
  return platform::BoolResult(platform::Query(service, config, bytes, bytesNeeded));
} catch (...) {
  return platform::FailedCall(FALSE);
}

}  // extern "C"
