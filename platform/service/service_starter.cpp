// Starts a service's process with the layer's own keeper. The only place to change when systemd
// shall start the service's unit instead.
#include "platform/service/service_starter.h"

#include <windows.h>
#include <shellapi.h>

#include <signal.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <winsvc.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>

#include "platform/kernel/encoding.h"
#include "platform/kernel/log.h"
#include "platform/kernel/path.h"
#include "platform/kernel/system_error.h"
#include "platform/kernel/trusted_path.h"
#include "platform/service/linux_service_process.h"
#include "platform/service/service_channel.h"
#include "platform/service/service_files.h"
#include "platform/service/service_state.h"

namespace platform {
namespace {

constexpr std::wstring_view kSystemRootVariable = L"%SystemRoot%";

std::wstring Expand(std::wstring_view imagePath) {
  const std::wstring_view start = imagePath.substr(0, kSystemRootVariable.size());
  if (!EqualNames(start, kSystemRootVariable)) return std::wstring(imagePath);
  return WindowsPath(RootFolder()) + std::wstring(imagePath.substr(kSystemRootVariable.size()));
}

bool IsProgram(const std::wstring& path) {
  std::error_code error;
  return std::filesystem::is_regular_file(PosixPath(path), error);
}

// The length of the program's path in a command line without quotes. A path may contain blanks, so
// it is the shortest part that is a file; the whole text when there is none.
std::size_t ProgramLength(const std::wstring& commandLine) {
  for (std::size_t end = commandLine.find(L' '); end != std::wstring::npos;
       end = commandLine.find(L' ', end + 1)) {
    if (IsProgram(commandLine.substr(0, end))) return end;
  }
  return commandLine.size();
}

std::vector<std::string> Words(const std::wstring& commandLine) {
  std::wstring line = commandLine;
  if (!line.starts_with(L'"')) {
    const std::size_t length = ProgramLength(line);
    line = L'"' + line.substr(0, length) + L'"' + line.substr(length);
  }
  std::vector<std::string> words;
  int count = 0;
  LPWSTR* split = ::CommandLineToArgvW(line.c_str(), &count);
  for (int i = 0; split != nullptr && i < count; ++i)
    words.push_back(i == 0 ? PosixPath(split[i]).native() : Utf8(split[i]));
  ::LocalFree(split);
  return words;
}

// The variables that a service inherits: language, time zone, display. All others are dropped, such
// as the search paths of libraries, plug-ins and character sets.
bool IsPassedOn(std::string_view variable) {
  constexpr std::string_view kNames[] = {
      "LANG=",
      "LANGUAGE=",
      "TZ=",
      "DISPLAY=",
      "WAYLAND_DISPLAY=",
      "XAUTHORITY=",
      "XDG_RUNTIME_DIR=",
      "XDG_SESSION_TYPE=",
      "DBUS_SESSION_BUS_ADDRESS=",
      "QT_QPA_PLATFORM=",
      "LC_",
  };
  return std::ranges::any_of(
      kNames, [variable](std::string_view name) { return variable.starts_with(name); });
}

// These variables, a fixed PATH, the service's name, and the root folder as an absolute path.
std::vector<std::string> Environment(std::wstring_view name) {
  std::vector<std::string> variables;
  for (char** each = environ; each != nullptr && *each != nullptr; ++each) {
    if (IsPassedOn(*each)) variables.emplace_back(*each);
  }
  variables.emplace_back("PATH=/usr/sbin:/usr/bin:/sbin:/bin");
  variables.push_back(std::string(kServiceVariable) + '=' + Utf8(name));
  variables.push_back("WIN_ROOT=" + std::filesystem::absolute(RootFolder()).native());
  return variables;
}

// Kills a process that has not called its dispatcher, and waits until its end of the channel is
// closed.
void Abandon(pid_t pid, int channel) {
  const FileDescriptor process(static_cast<int>(::syscall(SYS_pidfd_open, pid, 0)));
  if (process.IsOpen()) ::syscall(SYS_pidfd_send_signal, process.Get(), SIGKILL, nullptr, 0);
  AwaitTaken(channel);
}

DWORD StartWithKeeper(const ServiceRecord& record, int lock) {
  std::array<int, 2> ends{};
  if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0) {
    return ErrorFromErrno(errno);
  }
  const FileDescriptor ours(ends[0]);
  FileDescriptor theirs(ends[1]);
  ServiceProcess process;
  process.words = Words(Expand(record.imagePath));
  if (process.words.empty()) return ERROR_FILE_NOT_FOUND;
  process.environment = Environment(record.name);
  process.folder = std::filesystem::absolute(SystemFolder());
  const DWORD refusal =
      RequireTrusted(process.folder / process.words.front(), "service " + Utf8(record.name));
  if (refusal != NO_ERROR) return refusal;
  process.log = ServiceFilePath(record.name, ServiceFile::kLog);
  process.channel = theirs.Get();
  process.lock = lock;
  pid_t pid = 0;
  const DWORD error = LaunchServiceProcess(process, pid);
  theirs.Reset();
  if (error != NO_ERROR) return error;
  if (AwaitTaken(ours.Get())) return NO_ERROR;
  LogLine("service " + Utf8(record.name) + " has not called its dispatcher");
  Abandon(pid, ours.Get());
  return ERROR_SERVICE_REQUEST_TIMEOUT;
}

}  // namespace

DWORD StartServiceProcess(const ServiceRecord& record, FileDescriptor lock) {
  const DWORD error = StartWithKeeper(record, lock.Get());
  if (error != NO_ERROR) PublishState(record.name, StoppedState(record.type, error));
  return error;
}

}  // namespace platform
