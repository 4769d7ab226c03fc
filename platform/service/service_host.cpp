#include "platform/service/service_host.h"

#include <windows.h>

#include <poll.h>
#include <pthread.h>
#include <signal.h>
#include <sys/eventfd.h>
#include <sys/signalfd.h>
#include <sysexits.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <thread>

#include "platform/kernel/encoding.h"
#include "platform/kernel/handle_table.h"
#include "platform/kernel/log.h"
#include "platform/kernel/oom_score.h"
#include "platform/kernel/system_error.h"
#include "platform/service/linux_systemd_notice.h"
#include "platform/service/process_renewal.h"
#include "platform/service/service_database.h"
#include "platform/service/service_keeper.h"
#include "platform/service/service_state.h"

namespace platform {
namespace {

std::atomic<ServiceHost*> currentHost{nullptr};

// The object of the process's only status handle. It has no data: the host has the status.
class StatusObject final : public Object {};

sigset_t StopSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGTERM);
  return signals;
}

bool IsStatus(const SERVICE_STATUS& status) {
  const bool type =
      (status.dwServiceType & ~SERVICE_INTERACTIVE_PROCESS) == SERVICE_WIN32_OWN_PROCESS;
  return type && status.dwCurrentState >= SERVICE_STOPPED &&
         status.dwCurrentState <= SERVICE_PAUSED;
}

}  // namespace

ServiceHost* ServiceHost::Create() {
  auto inherited = TakeInheritedChannel();
  if (!inherited) return nullptr;
  auto* host = new ServiceHost(std::move(*inherited));
  currentHost = host;
  return host;
}

ServiceHost* ServiceHost::Current() {
  return currentHost;
}

ServiceHost::ServiceHost(ServiceChannel inherited)
    : name_(std::move(inherited.name)),
      bySystemd_(!inherited.channel.IsOpen()),
      channel_(std::move(inherited.channel)),
      lock_(std::move(inherited.lock)),
      status_(StartingState(SERVICE_WIN32_OWN_PROCESS).status) {}

DWORD ServiceHost::Run(LPSERVICE_MAIN_FUNCTIONW serviceMain) {
  dispatcher_ = std::this_thread::get_id();
  const DWORD error = Prepare();
  if (error != NO_ERROR) return error;
  std::thread mainThread([this, serviceMain] { RunMain(serviceMain); });
  if (!bySystemd_) ReportTaken(channel_.Get());
  channel_.Reset();
  Dispatch();
  server_.Close();
  mainThread.join();
  return NO_ERROR;
}

DWORD ServiceHost::Prepare() {
  SpareFromOomKiller();
  if (bySystemd_) NotifyTaken();
  // SIGTERM is blocked before the main thread is created, which inherits the mask. It stays blocked
  // after the service has stopped: a second signal must not interrupt the program's exit.
  const sigset_t signals = StopSignals();
  ::pthread_sigmask(SIG_BLOCK, &signals, nullptr);
  signals_.Reset(::signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK));
  wake_.Reset(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
  if (!signals_.IsOpen() || !wake_.IsOpen()) return ErrorFromErrno(errno);
  const DWORD error = server_.Listen(name_);
  if (error != NO_ERROR) return error;
  const std::lock_guard guard(mutex_);
  Publish(status_);
  return NO_ERROR;
}

void ServiceHost::RunMain(LPSERVICE_MAIN_FUNCTIONW serviceMain) noexcept {
  DWORD exitCode = ERROR_PROCESS_ABORTED;
  bool thrown = false;
  try {
    std::wstring name = name_;
    LPWSTR arguments[] = {name.data(), nullptr};
    serviceMain(1, arguments);
  } catch (...) {
    LogLine("an exception left the main function of the service");
    exitCode = ERROR_EXCEPTION_IN_SERVICE;
    thrown = true;
  }
  {
    const std::lock_guard guard(mutex_);
    // A main function may return and leave the service to other threads. Without a control handler
    // no thread is expected to report a status any more.
    const bool running = status_.dwCurrentState != SERVICE_STOPPED;
    if (running && (thrown || handler_ == nullptr)) {
      Publish(StoppedState(status_.dwServiceType, exitCode).status);
    }
    mainReturned_ = true;
  }
  Wake();
}

void ServiceHost::Dispatch() {
  while (!HasEnded()) {
    WaitForEvents();
    TakeSignals();
    StopOnSignal();
    server_.Serve([this](DWORD control) { return HandleControl(control); });
  }
}

void ServiceHost::WaitForEvents() {
  std::vector<pollfd> entries = {{signals_.Get(), POLLIN, 0}, {wake_.Get(), POLLIN, 0}};
  server_.AppendTo(entries);
  ::poll(entries.data(), entries.size(), server_.TimeoutMilliseconds());
  eventfd_t count = 0;
  ::eventfd_read(wake_.Get(), &count);
}

void ServiceHost::TakeSignals() {
  signalfd_siginfo signal{};
  while (::read(signals_.Get(), &signal, sizeof signal) == sizeof signal)
    stopRequested_ = true;
}

// A stop signal that arrives while the service starts is handled when the start has completed. When
// the machine goes down, a service gets no stop control: its process just ends, and what it has set
// in the kernel holds to the end.
void ServiceHost::StopOnSignal() {
  if (!stopRequested_) return;
  if (bySystemd_ && IsMachineGoingDown()) ::_exit(EXIT_SUCCESS);
  const SERVICE_STATUS status = Status();
  if (status.dwCurrentState == SERVICE_START_PENDING) return;
  stopRequested_ = false;
  const DWORD error = JudgeControl(status, SERVICE_CONTROL_STOP);
  if (error == NO_ERROR) {
    CallHandler(SERVICE_CONTROL_STOP);
  } else if (error == ERROR_INVALID_SERVICE_CONTROL) {
    LogLine("service " + Utf8(name_) + " accepts no stop; the signal was ignored");
  }
}

ControlReply ServiceHost::HandleControl(DWORD control) {
  ControlReply reply;
  reply.error = JudgeControl(Status(), control);
  if (reply.error == NO_ERROR) reply.error = CallHandler(control);
  reply.status = Status();
  return reply;
}

DWORD ServiceHost::CallHandler(DWORD control) {
  LPHANDLER_FUNCTION handler = nullptr;
  {
    const std::lock_guard guard(mutex_);
    handler = handler_;
  }
  if (handler == nullptr) return ERROR_SERVICE_CANNOT_ACCEPT_CTRL;
  try {
    handler(control);
    return NO_ERROR;
  } catch (...) {
    LogLine("an exception left the control handler of the service");
    return ERROR_EXCEPTION_IN_SERVICE;
  }
}

bool ServiceHost::HasEnded() {
  const std::lock_guard guard(mutex_);
  return mainReturned_ && status_.dwCurrentState == SERVICE_STOPPED;
}

SERVICE_STATUS_HANDLE ServiceHost::RegisterHandler(LPHANDLER_FUNCTION handler) {
  const std::lock_guard guard(mutex_);
  handler_ = handler;
  if (handle_ == nullptr) {
    handle_ = static_cast<SERVICE_STATUS_HANDLE>(
        Handles().Insert(HandleKind::kServiceStatus, std::make_shared<StatusObject>()));
  }
  return handle_;
}

DWORD ServiceHost::SetStatus(const SERVICE_STATUS& status) {
  if (!IsStatus(status)) return ERROR_INVALID_DATA;
  {
    const std::lock_guard guard(mutex_);
    if (bySystemd_ && IsSignOfLife(status)) {
      NotifyAlive();
      NoteSignOfLife(std::chrono::steady_clock::now());
    }
    Publish(status);
  }
  Wake();
  if (status.dwCurrentState == SERVICE_STOPPED) {
    // Read removes the record if it is marked for deletion.
    ServiceRecord record;
    ServiceDatabase().Read(name_, record);
  }
  return NO_ERROR;
}

// "Still running", said by a thread of the service's own accord. What the handler reports, which
// runs on the dispatcher's thread, only answers a control.
bool ServiceHost::IsSignOfLife(const SERVICE_STATUS& status) const {
  return status.dwCurrentState == SERVICE_RUNNING && status_.dwCurrentState == SERVICE_RUNNING &&
         std::this_thread::get_id() != dispatcher_;
}

SERVICE_STATUS ServiceHost::Status() {
  const std::lock_guard guard(mutex_);
  return status_;
}

void ServiceHost::Publish(const SERVICE_STATUS& status) {
  if (bySystemd_ && IsFailure(status)) Fail(status.dwWin32ExitCode);
  if (bySystemd_) NotifyStatus(status_, status);
  status_ = status;
  // PublishState logs a failure; clients of the control socket get the status all the same.
  PublishState(name_, {status, ::GetCurrentProcessId()});
}

// A service that ran ends with an error although nobody has stopped it.
bool ServiceHost::IsFailure(const SERVICE_STATUS& status) const {
  return status_.dwCurrentState == SERVICE_RUNNING && status.dwCurrentState == SERVICE_STOPPED &&
         status.dwWin32ExitCode != NO_ERROR;
}

// As a crash ends it, so that systemd starts it again and what it has set in the kernel stays.
void ServiceHost::Fail(DWORD error) {
  LogLine("service " + Utf8(name_) + " has failed: error " + std::to_string(error));
  ::_exit(EX_SOFTWARE);
}

void ServiceHost::Wake() {
  ::eventfd_write(wake_.Get(), 1);
}

}  // namespace platform
