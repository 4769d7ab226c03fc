#include "platform/tools/winsc/commands.h"

#include <windows.h>
#include <winreg.h>
#include <winsvc.h>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <vector>

#include "platform/tools/command_key.h"
#include "platform/tools/winsc/service.h"

namespace platform::winsc {
namespace {

constexpr DWORD kPollMilliseconds = 50;
constexpr DWORD kStartTimeoutMilliseconds = 30'000;
constexpr DWORD kStopTimeoutMilliseconds = 60'000;

struct Text {
  DWORD number;
  const wchar_t* text;
};

const wchar_t* StateText(DWORD state) {
  static constexpr const wchar_t* kTexts[] = {L"stopped", L"start pending",    L"stop pending",
                                              L"running", L"continue pending", L"pause pending",
                                              L"paused"};
  return state >= 1 && state <= std::size(kTexts) ? kTexts[state - 1] : L"unknown";
}

const wchar_t* ErrorText(DWORD error) {
  static constexpr Text kTexts[] = {
      {ERROR_FILE_NOT_FOUND, L"the program or driver was not found"},
      {ERROR_ACCESS_DENIED, L"access denied"},
      {ERROR_INVALID_PARAMETER, L"not a control that can be sent"},
      {ERROR_INVALID_NAME, L"not a name of a service"},
      {ERROR_INVALID_SERVICE_CONTROL, L"the service does not accept this control"},
      {ERROR_SERVICE_REQUEST_TIMEOUT, L"the service did not respond in time"},
      {ERROR_SERVICE_ALREADY_RUNNING, L"already running"},
      {ERROR_SERVICE_DISABLED, L"the service is disabled"},
      {ERROR_SERVICE_DOES_NOT_EXIST, L"no such service"},
      {ERROR_SERVICE_CANNOT_ACCEPT_CTRL, L"the service cannot accept controls now"},
      {ERROR_SERVICE_NOT_ACTIVE, L"not running"},
      {ERROR_SERVICE_MARKED_FOR_DELETE, L"the service is marked for deletion"},
  };
  const auto* found = std::ranges::find(kTexts, error, &Text::number);
  return found == std::end(kTexts) ? L"failed" : found->text;
}

int Fail(const std::wstring& name, DWORD error) {
  std::fwprintf(stderr, L"%ls: %ls (error %u)\n", name.c_str(), ErrorText(error), error);
  return kFailed;
}

void PrintLine(const std::wstring& name, const wchar_t* text) {
  std::wprintf(L"%ls: %ls\n", name.c_str(), text);
}

// Tells that it was done, or why not.
int Finish(const std::wstring& name, DWORD error, const wchar_t* done) {
  if (error != NO_ERROR) return Fail(name, error);
  PrintLine(name, done);
  return kDone;
}

bool IsDriver(const Service& service) {
  DWORD type = 0;
  DWORD startType = 0;
  return service.ReadConfig(type, startType) == NO_ERROR && type == SERVICE_KERNEL_DRIVER;
}

// Waits until the service has reported that it runs or that its start has failed.
DWORD AwaitStart(const Service& service) {
  for (DWORD waited = 0; waited < kStartTimeoutMilliseconds; waited += kPollMilliseconds) {
    SERVICE_STATUS_PROCESS status{};
    const DWORD error = service.Query(status);
    if (error != NO_ERROR) return error;
    if (status.dwCurrentState == SERVICE_STOPPED) {
      return status.dwWin32ExitCode == NO_ERROR ? ERROR_SERVICE_NOT_ACTIVE : status.dwWin32ExitCode;
    }
    if (status.dwCurrentState != SERVICE_START_PENDING) return NO_ERROR;
    ::Sleep(kPollMilliseconds);
  }
  return ERROR_SERVICE_REQUEST_TIMEOUT;
}

// Waits until the service is stopped and its process has exited.
DWORD AwaitEnd(const Service& service) {
  for (DWORD waited = 0; waited < kStopTimeoutMilliseconds; waited += kPollMilliseconds) {
    SERVICE_STATUS_PROCESS status{};
    const DWORD error = service.Query(status);
    if (error != NO_ERROR) return error;
    if (status.dwCurrentState == SERVICE_STOPPED && status.dwProcessId == 0) return NO_ERROR;
    ::Sleep(kPollMilliseconds);
  }
  return ERROR_SERVICE_REQUEST_TIMEOUT;
}

std::vector<std::wstring> ServiceNames() {
  const RegistryKey key(HKEY_LOCAL_MACHINE, L"SYSTEM\\CurrentControlSet\\Services");
  return NamesBelow(key.Get());
}

int StartAtBoot(const std::wstring& name) {
  const Service service(name);
  DWORD type = 0;
  DWORD startType = SERVICE_DISABLED;
  const DWORD error = service.ReadConfig(type, startType);
  if (error != NO_ERROR) return Fail(name, error);
  if (startType > SERVICE_AUTO_START) return kDone;
  if (type == SERVICE_KERNEL_DRIVER) {
    PrintLine(name, L"left to the service that needs this driver");
    return kDone;
  }
  const DWORD startError = service.Start();
  if (startError != NO_ERROR && startError != ERROR_SERVICE_ALREADY_RUNNING) {
    return Fail(name, startError);
  }
  PrintLine(name, startError == NO_ERROR ? L"started" : L"already running");
  return kDone;
}

}  // namespace

int Start(const std::wstring& name) {
  const Service service(name);
  if (IsDriver(service)) {
    std::fwprintf(stderr, L"%ls: a driver lives in the process that starts it; not started\n",
                  name.c_str());
    return kFailed;
  }
  DWORD error = service.Start();
  if (error == NO_ERROR) error = AwaitStart(service);
  return Finish(name, error, L"started");
}

int Stop(const std::wstring& name) {
  const Service service(name);
  SERVICE_STATUS status{};
  DWORD error = service.Control(SERVICE_CONTROL_STOP, status);
  // Waits for a service that is already stopping, too.
  const bool stopping =
      error == ERROR_SERVICE_CANNOT_ACCEPT_CTRL && status.dwCurrentState == SERVICE_STOP_PENDING;
  if (error == NO_ERROR || stopping) error = AwaitEnd(service);
  return Finish(name, error, L"stopped");
}

int Query(const std::wstring& name) {
  const Service service(name);
  SERVICE_STATUS_PROCESS status{};
  const DWORD error = service.Query(status);
  if (error != NO_ERROR) return Fail(name, error);
  std::wprintf(L"%ls: %ls", name.c_str(), StateText(status.dwCurrentState));
  if (status.dwProcessId != 0) std::wprintf(L", process %u", status.dwProcessId);
  if (status.dwCurrentState == SERVICE_STOPPED) {
    std::wprintf(L", exit code %u", status.dwWin32ExitCode);
  }
  std::wprintf(L"\n");
  return status.dwCurrentState == SERVICE_STOPPED ? kNotRunning : kDone;
}

int Control(const std::wstring& name, DWORD code) {
  const Service service(name);
  SERVICE_STATUS status{};
  const DWORD error = service.Control(code, status);
  if (error != NO_ERROR) return Fail(name, error);
  std::wprintf(L"%ls: control %u taken, %ls\n", name.c_str(), code,
               StateText(status.dwCurrentState));
  return kDone;
}

int Refresh(const std::wstring& name) {
  return Finish(name, Service(name).Refresh(), L"refreshed");
}

int Delete(const std::wstring& name) {
  return Finish(name, Service(name).Delete(), L"deleted");
}

int Autostart() {
  int result = kDone;
  for (const std::wstring& name : ServiceNames())
    result = std::max(result, StartAtBoot(name));
  return result;
}

}  // namespace platform::winsc
