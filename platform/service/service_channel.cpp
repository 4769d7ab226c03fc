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
#include "platform/service/service_files.h"

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

}  // namespace

std::optional<ServiceChannel> TakeInheritedChannel() {
  const char* variable = std::getenv(kServiceVariable);
  if (variable == nullptr) return std::nullopt;
  ServiceChannel inherited;
  inherited.name = Wide(variable);
  ::unsetenv(kServiceVariable);
  // The variable alone proves nothing: a program may have passed it on to a child process.
  if (!IsServiceName(inherited.name) || !IsSocket(kInheritedChannel) ||
      !IsLockFile(kInheritedLock, inherited.name)) {
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
