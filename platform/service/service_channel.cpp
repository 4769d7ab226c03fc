#include "platform/service/service_channel.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdlib>

#include "platform/kernel/encoding.h"
#include "platform/kernel/linux_poll.h"
#include "platform/kernel/log.h"
#include "platform/service/linux_systemd_notice.h"
#include "platform/service/service_files.h"
#include "platform/service/service_state.h"

namespace platform {
namespace {

constexpr char kTaken = 'T';
constexpr std::chrono::seconds kTimeout{30};

bool IsSocket(int descriptor) {
  struct stat status {};
  return ::fstat(descriptor, &status) == 0 && S_ISSOCK(status.st_mode);
}

bool IsLockFile(int descriptor, std::wstring_view name) {
  struct stat status {};
  struct stat file {};
  return ::fstat(descriptor, &status) == 0 &&
         ::lstat(ServiceFilePath(name, ServiceFile::kLock).c_str(), &file) == 0 &&
         status.st_dev == file.st_dev && status.st_ino == file.st_ino;
}

// Publishes that the service starts, too: what lies there is of the process before. A full disk,
// which is logged, keeps no service from running.
bool TakeLock(ServiceChannel& started) {
  const DWORD error = TakeServiceLock(started.name, started.lock);
  if (error != NO_ERROR) {
    LogLine("service " + Utf8(started.name) + " cannot be taken over: error " +
            std::to_string(error));
    return false;
  }
  ServiceState starting = StartingState(SERVICE_WIN32_OWN_PROCESS);
  starting.processId = static_cast<DWORD>(::getpid());
  PublishState(started.name, starting);
  return true;
}

}  // namespace

std::optional<ServiceChannel> TakeInheritedChannel() {
  const char* variable = std::getenv(kServiceVariable);
  if (variable == nullptr) return std::nullopt;
  ServiceChannel inherited;
  inherited.name = Wide(variable);
  ::unsetenv(kServiceVariable);
  if (!IsServiceName(inherited.name)) return std::nullopt;
  if (IsStartedBySystemd()) {
    if (!TakeLock(inherited)) return std::nullopt;
    return inherited;
  }
  // The variable alone proves nothing: a program may have passed it on to a child process.
  if (!IsSocket(kInheritedChannel) || !IsLockFile(kInheritedLock, inherited.name)) {
    return std::nullopt;
  }
  inherited.channel.Reset(kInheritedChannel);
  inherited.lock.Reset(kInheritedLock);
  ::fcntl(kInheritedChannel, F_SETFD, FD_CLOEXEC);
  ::fcntl(kInheritedLock, F_SETFD, FD_CLOEXEC);
  return inherited;
}

void ReportTaken(int channel) {
  // A keeper that has died misses the report; nothing else is affected.
  [[maybe_unused]] const ssize_t sent = ::send(channel, &kTaken, sizeof kTaken, MSG_NOSIGNAL);
}

bool AwaitTaken(int channel) {
  AwaitInput(channel, std::chrono::steady_clock::now() + kTimeout);
  char report = 0;
  return ::recv(channel, &report, sizeof report, MSG_DONTWAIT) == sizeof report && report == kTaken;
}

}  // namespace platform
