// The service for the service control manager: its names, its status, its main routine and its
// control handler. The process has one, created at process entry. The main routine runs on the
// service main thread, the handler on the first thread of the process.
#pragma once

#include <windows.h>
#include <winsvc.h>

#include <atomic>
#include <memory>
#include <string>

#include "handles/handle.h"
#include "service/process_objects.h"
#include "service/stop_guard.h"

namespace quillgate {

class ServiceModule {
 public:
  // Creates the mutex that marks a running process of this program.
  explicit ServiceModule(ProcessObjects& objects);

  // Stores the names, resets the status and opens the database. When the database cannot be opened,
  // shows the error, sends the stop control to the service, in case it runs, and returns false.
  bool Initialise(const std::wstring& serviceName, const std::wstring& displayName);

  // Connects the calling thread to the service control manager. Returns when the service has
  // stopped, or immediately when the manager did not start this process, which is logged.
  void RunAsService();

  // The main routine: reports the states and, in between, runs the service main thread.
  void RunServiceMain();

  // Handles one control of the service control manager.
  void HandleControl(DWORD control);

  // Called first by the service main thread. From then on stop requests post WM_QUIT to it; for a
  // request that came earlier, WM_QUIT is posted here.
  void SetMainThread();

  // Called after each enforcement cycle: reports once more that the service runs, if it does, so
  // that the system can tell a service that hangs. On the monitor thread.
  void ReportAlive() noexcept;

  const std::wstring& ServiceName() const { return serviceName_; }
  const std::wstring& DisplayName() const { return displayName_; }

 private:
  static void WINAPI ServiceMain(DWORD argumentCount, LPWSTR* arguments) noexcept;
  static void WINAPI ControlHandler(DWORD control) noexcept;

  void ReportState(DWORD state);
  void RequestStop();
  void ForceExit();

  ProcessObjects& objects_;
  KernelHandle runningMutex_;
  // Mutex that the main routine owns while it runs. The main routine may still run when the
  // dispatcher has returned, for what it does after its last report.
  KernelHandle mainRoutine_;
  std::atomic<DWORD> mainThreadId_{0};
  std::wstring serviceName_;
  std::wstring displayName_;
  // Protects the status: the main routine and the handler report on different threads.
  CriticalSection statusLock_;
  SERVICE_STATUS_HANDLE statusHandle_ = nullptr;
  SERVICE_STATUS status_{};
  std::unique_ptr<StopGuard> stopGuard_;
};

}  // namespace quillgate
