// The service that this process runs: its status, its control handler and its dispatcher. Made when
// a program that a keeper has started calls its dispatcher, and never destroyed: threads of the
// program may report a status until the process ends. Any thread, where nothing else is said.
#pragma once

#include <winsvc.h>

#include <mutex>
#include <string>

#include "platform/kernel/file_descriptor.h"
#include "platform/service/control_message.h"
#include "platform/service/control_server.h"
#include "platform/service/service_channel.h"

namespace platform {

class ServiceHost {
 public:
  // Becomes the host of this process; null when it was not started by a keeper. Once in a process.
  static ServiceHost* Create();
  // Null before.
  static ServiceHost* Current();

  // Runs the service: its main function on a thread of its own, the control handler on the calling
  // thread. Returns when the service has reported that it is stopped and its main function has
  // returned, or when it could not be started: then with the error.
  DWORD Run(LPSERVICE_MAIN_FUNCTIONW serviceMain);

  // Answers the handle with which the service reports its status.
  SERVICE_STATUS_HANDLE RegisterHandler(LPHANDLER_FUNCTION handler);

  // Publishes the status. ERROR_INVALID_DATA when it is no status of a service.
  DWORD SetStatus(const SERVICE_STATUS& status);

 private:
  explicit ServiceHost(ServiceChannel inherited);

  DWORD Prepare();
  void RunMain(LPSERVICE_MAIN_FUNCTIONW serviceMain) noexcept;
  void Dispatch();
  void WaitForEvents();
  void TakeSignals();
  void StopOnSignal();
  ControlReply Answer(DWORD control);
  DWORD CallHandler(DWORD control);
  bool HasEnded();
  SERVICE_STATUS Status();
  void Publish(const SERVICE_STATUS& status);
  void Wake();

  const std::wstring name_;
  FileDescriptor channel_;
  FileDescriptor lock_;  // held until the process ends
  FileDescriptor signals_;
  FileDescriptor wake_;  // an event counter: something has changed
  ControlServer server_;
  bool stopRequested_ = false;  // by signal, and not yet passed on; the dispatcher's thread alone

  std::mutex mutex_;  // of what follows
  SERVICE_STATUS status_{};
  LPHANDLER_FUNCTION handler_ = nullptr;
  SERVICE_STATUS_HANDLE handle_ = nullptr;
  bool mainReturned_ = false;
};

}  // namespace platform
