// The service that this process runs: its status, its control handler and its dispatcher. Created
// when a program that a keeper has started calls StartServiceCtrlDispatcherW. Never destroyed:
// threads of the program may report a status until the process exits. Any thread, unless noted.
#pragma once

#include <winsvc.h>

#include <mutex>
#include <string>
#include <thread>

#include "platform/kernel/file_descriptor.h"
#include "platform/service/control_message.h"
#include "platform/service/control_server.h"
#include "platform/service/service_channel.h"

namespace platform {

class ServiceHost {
 public:
  // Creates the host of this process; null when it was not started by a keeper. Once in a process.
  static ServiceHost* Create();
  // Null before Create has succeeded.
  static ServiceHost* Current();

  // Runs the service: its main function on a new thread, the control handler on the calling thread.
  // Returns 0 when the service has reported SERVICE_STOPPED and its main function has returned, or
  // an error when the service could not be started.
  DWORD Run(LPSERVICE_MAIN_FUNCTIONW serviceMain);

  // Returns the handle with which the service reports its status.
  SERVICE_STATUS_HANDLE RegisterHandler(LPHANDLER_FUNCTION handler);

  // Publishes the status. Running after running is a sign of life for systemd's watchdog, unless
  // the control handler reports it. Stopped with an error, unasked, ends a process of systemd's at
  // once. ERROR_INVALID_DATA when the type or the state is invalid.
  DWORD SetStatus(const SERVICE_STATUS& status);

 private:
  explicit ServiceHost(ServiceChannel inherited);

  DWORD Prepare();
  void RunMain(LPSERVICE_MAIN_FUNCTIONW serviceMain) noexcept;
  void Dispatch();
  void WaitForEvents();
  void TakeSignals();
  void StopOnSignal();
  ControlReply HandleControl(DWORD control);
  DWORD CallHandler(DWORD control);
  bool HasEnded();
  bool IsSignOfLife(const SERVICE_STATUS& status) const;  // under the mutex
  SERVICE_STATUS Status();
  void Publish(const SERVICE_STATUS& status);
  bool IsFailure(const SERVICE_STATUS& status) const;  // under the mutex
  [[noreturn]] void Fail(DWORD error);
  void Wake();

  const std::wstring name_;
  const bool bySystemd_;
  std::thread::id dispatcher_;
  FileDescriptor channel_;
  FileDescriptor lock_;  // held until the process ends
  FileDescriptor signals_;
  FileDescriptor wake_;  // an eventfd, written when the status changes or the main function returns
  ControlServer server_;
  bool stopRequested_ = false;  // by SIGTERM, and not handled yet; the dispatcher's thread alone

  std::mutex mutex_;  // guards the members below
  SERVICE_STATUS status_;
  LPHANDLER_FUNCTION handler_ = nullptr;
  SERVICE_STATUS_HANDLE handle_ = nullptr;
  bool mainReturned_ = false;
};

}  // namespace platform
