#include "platform/service/service_state.h"

#include <fcntl.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <optional>
#include <sstream>
#include <string>

#include "platform/kernel/encoding.h"
#include "platform/kernel/log.h"
#include "platform/kernel/system_error.h"
#include "platform/service/service_files.h"

namespace platform {
namespace {

// The first word on the line, which identifies the format.
constexpr std::string_view kFormat = "service-status-1";

struct flock WholeFile() {
  struct flock range {};
  range.l_type = F_WRLCK;
  range.l_whence = SEEK_SET;
  return range;
}

FileDescriptor OpenLockFile(std::wstring_view name, int flags) {
  const std::string path = ServiceFilePath(name, ServiceFile::kLock).native();
  return FileDescriptor(::open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | flags, 0600));
}

std::string Line(const ServiceState& state) {
  const SERVICE_STATUS& status = state.status;
  std::ostringstream line;
  line << kFormat << ' ' << state.processId << ' ' << status.dwServiceType << ' '
       << status.dwCurrentState << ' ' << status.dwControlsAccepted << ' ' << status.dwWin32ExitCode
       << ' ' << status.dwServiceSpecificExitCode << ' ' << status.dwCheckPoint << ' '
       << status.dwWaitHint << '\n';
  return line.str();
}

std::optional<ServiceState> Parse(const std::string& text) {
  std::istringstream line(text);
  std::string format;
  ServiceState state;
  SERVICE_STATUS& status = state.status;
  line >> format >> state.processId >> status.dwServiceType >> status.dwCurrentState >>
      status.dwControlsAccepted >> status.dwWin32ExitCode >> status.dwServiceSpecificExitCode >>
      status.dwCheckPoint >> status.dwWaitHint;
  const bool complete = !line.fail() && line.get() == '\n' && line.peek() == EOF;
  const bool validState =
      status.dwCurrentState >= SERVICE_STOPPED && status.dwCurrentState <= SERVICE_PAUSED;
  if (!complete || format != kFormat || !validState) return std::nullopt;
  return state;
}

enum class Published { kNothing, kUnreadable, kState };

Published ReadPublished(std::wstring_view name, ServiceState& state) {
  const std::string path = ServiceFilePath(name, ServiceFile::kStatus).native();
  const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
  if (!file.IsOpen() && errno == ENOENT) return Published::kNothing;
  std::array<char, 256> text{};
  const ssize_t bytes = file.IsOpen() ? ::read(file.Get(), text.data(), text.size()) : -1;
  const auto parsed =
      Parse(bytes > 0 ? std::string(text.data(), static_cast<std::size_t>(bytes)) : std::string());
  if (!parsed) return Published::kUnreadable;
  state = *parsed;
  return Published::kState;
}

ServiceState StateOfLiving(Published published, const ServiceState& read, DWORD serviceType) {
  if (published == Published::kState) return read;
  // Another process has just taken the lock and has not published yet.
  if (published == Published::kNothing) {
    return StoppedState(serviceType, ERROR_SERVICE_NEVER_STARTED);
  }
  ServiceState state;
  state.status.dwServiceType = serviceType;
  state.status.dwCurrentState = SERVICE_RUNNING;
  return state;
}

ServiceState StateOfDead(Published published, const ServiceState& read, DWORD serviceType) {
  if (published == Published::kNothing) {
    return StoppedState(serviceType, ERROR_SERVICE_NEVER_STARTED);
  }
  const bool stopped =
      published == Published::kState && read.status.dwCurrentState == SERVICE_STOPPED;
  if (!stopped) return StoppedState(serviceType, ERROR_PROCESS_ABORTED);
  ServiceState state = read;
  state.processId = 0;
  return state;
}

}  // namespace

DWORD TakeServiceLock(std::wstring_view name, FileDescriptor& lock) {
  FileDescriptor file = OpenLockFile(name, O_CREAT);
  if (!file.IsOpen()) return ErrorFromErrno(errno);
  struct flock range = WholeFile();
  if (::fcntl(file.Get(), F_OFD_SETLK, &range) != 0) {
    const bool held = errno == EAGAIN || errno == EACCES;
    return held ? ERROR_SERVICE_ALREADY_RUNNING : ErrorFromErrno(errno);
  }
  lock = std::move(file);
  return NO_ERROR;
}

// Queries the lock without taking it, so that a process that starts the service can take it.
bool IsServiceLockHeld(std::wstring_view name) {
  const FileDescriptor file = OpenLockFile(name, 0);
  struct flock range = WholeFile();
  return file.IsOpen() && ::fcntl(file.Get(), F_OFD_GETLK, &range) == 0 && range.l_type != F_UNLCK;
}

DWORD PublishState(std::wstring_view name, const ServiceState& state) {
  const std::string path = ServiceFilePath(name, ServiceFile::kStatus).native();
  const std::string fresh = path + ".new";
  const FileDescriptor file(
      ::open(fresh.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0600));
  const std::string line = Line(state);
  const bool written = file.IsOpen() && ::write(file.Get(), line.data(), line.size()) ==
                                            static_cast<ssize_t>(line.size());
  if (written && ::rename(fresh.c_str(), path.c_str()) == 0) return NO_ERROR;
  const DWORD error = ErrorFromErrno(errno);
  LogLine("the status of service " + Utf8(name) + " could not be published");
  return error;
}

void ForgetState(std::wstring_view name) {
  ::unlink(ServiceFilePath(name, ServiceFile::kStatus).c_str());
}

ServiceState ReadState(std::wstring_view name, DWORD serviceType) {
  while (true) {
    const bool alive = IsServiceLockHeld(name);
    ServiceState read;
    const Published published = ReadPublished(name, read);
    if (alive) return StateOfLiving(published, read, serviceType);
    // The published state belongs to a dead process only if no process has started the service
    // between the two queries of the lock.
    if (!IsServiceLockHeld(name)) return StateOfDead(published, read, serviceType);
  }
}

ServiceState StartingState(DWORD serviceType) {
  ServiceState state;
  state.status.dwServiceType = serviceType;
  state.status.dwCurrentState = SERVICE_START_PENDING;
  state.status.dwWaitHint = 2000;
  return state;
}

ServiceState StoppedState(DWORD serviceType, DWORD exitCode) {
  ServiceState state;
  state.status.dwServiceType = serviceType;
  state.status.dwCurrentState = SERVICE_STOPPED;
  state.status.dwWin32ExitCode = exitCode;
  return state;
}

}  // namespace platform
