#include "platform/service/linux_systemd_notice.h"

#include <systemd/sd-daemon.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <string>

namespace platform {
namespace {

constexpr int kKeepEnvironment = 0;

bool IsStopping(DWORD state) {
  return state == SERVICE_STOP_PENDING || state == SERVICE_STOPPED;
}

void Send(const std::string& notice) {
  ::sd_notify(kKeepEnvironment, notice.c_str());
}

}  // namespace

bool IsStartedBySystemd() {
  const char* process = std::getenv("SYSTEMD_EXEC_PID");
  return process != nullptr && std::getenv("NOTIFY_SOCKET") != nullptr &&
         process == std::to_string(::getpid());
}

void NotifyTaken() {
  Send("WATCHDOG_USEC=0");
}

void NotifyStatus(const SERVICE_STATUS& before, const SERVICE_STATUS& status) {
  const DWORD state = status.dwCurrentState;
  if (state == SERVICE_RUNNING && before.dwCurrentState != SERVICE_RUNNING) Send("READY=1");
  if (IsStopping(state) && !IsStopping(before.dwCurrentState)) Send("STOPPING=1");
  const bool pending = state == SERVICE_START_PENDING || state == SERVICE_STOP_PENDING;
  if (pending && status.dwWaitHint != 0) {
    Send("EXTEND_TIMEOUT_USEC=" + std::to_string(std::uint64_t{1000} * status.dwWaitHint));
  }
}

void NotifyAlive() {
  std::uint64_t limit = 0;
  if (::sd_watchdog_enabled(kKeepEnvironment, &limit) <= 0) return;
  Send("WATCHDOG_USEC=" + std::to_string(limit) + "\nWATCHDOG=1");
}

}  // namespace platform
