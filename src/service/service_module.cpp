#include "service/service_module.h"

#include "service/service_installation.h"
#include "service/service_main_thread.h"
#include "service/service_names.h"

namespace quillgate {
namespace {

constexpr std::size_t kNameLimit = 256;

// The module whose routines the service control manager calls; the calls carry no context.
std::atomic<ServiceModule*> dispatchedModule{nullptr};

// Owns a mutex during its lifetime.
class MutexOwner {
 public:
  explicit MutexOwner(HANDLE mutex) : mutex_(mutex) { ::WaitForSingleObject(mutex_, INFINITE); }
  ~MutexOwner() { ::ReleaseMutex(mutex_); }
  MutexOwner(const MutexOwner&) = delete;
  MutexOwner& operator=(const MutexOwner&) = delete;

 private:
  const HANDLE mutex_;
};

SERVICE_STATUS StoppedStatus() {
  SERVICE_STATUS status{};
  status.dwServiceType = SERVICE_WIN32_OWN_PROCESS;
  status.dwCurrentState = SERVICE_STOPPED;
  status.dwControlsAccepted = SERVICE_ACCEPT_STOP;
  return status;
}

}  // namespace

ServiceModule::ServiceModule(ProcessObjects& objects)
    : objects_(objects),
      runningMutex_(::CreateMutexW(nullptr, TRUE, kRunningMutexName)),
      mainRoutine_(::CreateMutexW(nullptr, FALSE, nullptr)),
      status_(StoppedStatus()) {}

bool ServiceModule::Initialise(const std::wstring& serviceName, const std::wstring& displayName) {
  serviceName_ = serviceName.substr(0, kNameLimit);
  displayName_ = displayName.substr(0, kNameLimit);
  status_ = StoppedStatus();
  try {
    objects_.GetDatabase().DbOpen();
    return true;
  } catch (const DBerror& error) {
    ::MessageBoxW(nullptr, error.Message().c_str(), displayName_.c_str(), MB_ICONERROR);
  }
  StopOwnService();
  return false;
}

void ServiceModule::RunAsService() {
  dispatchedModule = this;
  objects_.Events().SetRunningAsService(true);
  const SERVICE_TABLE_ENTRYW table[] = {{serviceName_.data(), ServiceMain}, {nullptr, nullptr}};
  if (!::StartServiceCtrlDispatcherW(table)) {
    const DWORD error = ::GetLastError();
    objects_.Events().SetRunningAsService(false);
    objects_.Events().LogEvent(L"StartServiceCtrlDispatcher Error=" + std::to_wstring(error));
  }
  const MutexOwner afterMainRoutine(mainRoutine_.Get());
  dispatchedModule = nullptr;
}

void WINAPI ServiceModule::ServiceMain(DWORD, LPWSTR*) noexcept {
  ServiceModule* module = dispatchedModule;
  const MutexOwner running(module->mainRoutine_.Get());
  try {
    module->RunServiceMain();
  } catch (...) {
    module->objects_.Events().LogCurrentException();
  }
}

void WINAPI ServiceModule::ControlHandler(DWORD control) noexcept {
  ServiceModule* module = dispatchedModule;
  try {
    module->HandleControl(control);
  } catch (...) {
    module->objects_.Events().LogCurrentException();
  }
}

void ServiceModule::RunServiceMain() {
  EventLog& events = objects_.Events();
  {
    const CriticalSectionLock hold(statusLock_);
    status_.dwCurrentState = SERVICE_START_PENDING;
    statusHandle_ = ::RegisterServiceCtrlHandlerW(serviceName_.c_str(), ControlHandler);
  }
  if (statusHandle_ == nullptr) {
    events.LogEvent(L"Handler not installed");
    return;
  }
  ReportState(SERVICE_START_PENDING);
  events.LogEvent(L"Service started");
  if (events.IsRunningAsService()) ReportState(SERVICE_RUNNING);
  try {
    ServiceMainThread(*this, objects_).Run();
  } catch (...) {
    events.LogCurrentException();
    const CriticalSectionLock hold(statusLock_);
    status_.dwWin32ExitCode = ERROR_EXCEPTION_IN_SERVICE;
  }
  ReportState(SERVICE_STOPPED);
  events.LogEvent(L"Service stopped");
}

void ServiceModule::ReportState(DWORD state) {
  const CriticalSectionLock hold(statusLock_);
  status_.dwCurrentState = state;
  ::SetServiceStatus(statusHandle_, &status_);
}

void ServiceModule::ReportAlive() noexcept {
  const CriticalSectionLock hold(statusLock_);
  if (status_.dwCurrentState == SERVICE_RUNNING) ::SetServiceStatus(statusHandle_, &status_);
}

void ServiceModule::HandleControl(DWORD control) {
  switch (control) {
    case SERVICE_CONTROL_STOP:
      objects_.Events().LogEvent(L"Request to stop...");
      ReportState(SERVICE_STOP_PENDING);
      RequestStop();
      break;
    case SERVICE_CONTROL_PAUSE:
    case SERVICE_CONTROL_CONTINUE:
    case SERVICE_CONTROL_INTERROGATE:
    case SERVICE_CONTROL_SHUTDOWN:
      break;
    case kControlWindowsLogon:
      objects_.Logons().LogOnOrPost();
      break;
    case kControlWindowsLogoff:
      objects_.Logons().LogOff(1);
      break;
    default:
      objects_.Events().LogEvent(L"Bad service request");
      break;
  }
}

void ServiceModule::RequestStop() {
  objects_.Stop().Raise();
  const DWORD thread = mainThreadId_;
  if (thread != 0) ::PostThreadMessageW(thread, WM_QUIT, 0, 0);
  if (stopGuard_ != nullptr) return;
  stopGuard_ = std::make_unique<StopGuard>(mainRoutine_.Get(), [this] { ForceExit(); });
  stopGuard_->Start();
}

// Runs on the thread of the guard while the main routine is stuck: must not wait for anything that
// the main routine could hold.
void ServiceModule::ForceExit() {
  objects_.OpenGateForGood();
  objects_.Events().LogEvent(L"The service did not stop in time and was ended.");
  ReportState(SERVICE_STOPPED);
  ::ExitProcess(0);
}

void ServiceModule::SetMainThread() {
  // A thread gets its message queue with the first call that reads from it.
  MSG message{};
  ::PeekMessageW(&message, nullptr, WM_USER, WM_USER, PM_NOREMOVE);
  mainThreadId_ = ::GetCurrentThreadId();
  if (objects_.Stop().IsRaised()) ::PostQuitMessage(0);
}

}  // namespace quillgate
