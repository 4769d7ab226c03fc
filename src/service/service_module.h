// The service as the service control manager sees it: its names, its status, its main routine and
// its control handler. The process has one, made at process entry. The main routine runs on the
// service main thread, the handler on the process's first thread.
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

  // Takes the names, resets the status and opens the database. False when that fails: the error has
  // been shown, and the service of that name, should it run, been asked to stop.
  bool Initialise(const std::wstring& serviceName, const std::wstring& displayName);

  // Hands the calling thread to the service control manager; returns when the service has stopped,
  // or at once when the manager did not start this process, which is logged.
  void RunAsService();

  // The main routine: reports the states and, in between, runs the service main thread.
  void RunServiceMain();

  // One control of the service control manager.
  void HandleControl(DWORD control);

  // The first action of the service main thread, from which on stop requests reach it by WM_QUIT;
  // one that came before is made good for.
  void SetMainThread();

  const std::wstring& ServiceName() const { return serviceName_; }
  const std::wstring& DisplayName() const { return displayName_; }

 private:
  static void WINAPI ServiceMain(DWORD argumentCount, LPWSTR* arguments) noexcept;
  static void WINAPI ControlHandler(DWORD control) noexcept;

  void ReportState(DWORD state);
  void RequestStop();
  void EndByForce();

  ProcessObjects& objects_;
  KernelHandle runningMutex_;
  // A mutex of the main routine, which may outlast the dispatcher by what it does after its last
  // report.
  KernelHandle mainRoutine_;
  std::atomic<DWORD> mainThreadId_{0};
  std::wstring serviceName_;
  std::wstring displayName_;
  // The main routine's and the handler's threads both report.
  CriticalSection statusLock_;
  SERVICE_STATUS_HANDLE statusHandle_ = nullptr;
  SERVICE_STATUS status_{};
  std::unique_ptr<StopGuard> stopGuard_;
};

}  // namespace quillgate
