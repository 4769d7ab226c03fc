#include "platform/service/linux_service_process.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <winerror.h>

#include <array>
#include <cerrno>

#include "platform/kernel/file_descriptor.h"
#include "platform/kernel/system_error.h"
#include "platform/service/service_channel.h"

namespace platform {
namespace {

constexpr off_t kMaxLogBytes = 1024 * 1024;
// Descriptors are first duplicated above the inherited numbers, so that dup2 overwrites none.
constexpr int kAboveInherited = 10;

// What the two new processes write to the pipe: the intermediate process the service's process
// identifier or an error, the service's process an error when it cannot run the program.
struct LaunchReport {
  pid_t pid = 0;
  int error = 0;
};

// Everything that the new process needs, prepared before the fork: between fork and exec only
// async-signal-safe functions may be called, since other threads may hold locks.
struct Prepared {
  std::vector<char*> words;
  std::vector<char*> environment;
  const char* folder;
  int input;
  int output;
  int channel;
  int lock;
  int report;
};

std::vector<char*> Pointers(const std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (const std::string& text : texts)
    pointers.push_back(const_cast<char*>(text.c_str()));
  pointers.push_back(nullptr);
  return pointers;
}

// The log of earlier runs is kept. A log above the limit is renamed to ".old", which is replaced.
FileDescriptor OpenLog(const std::filesystem::path& path) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) == 0 && status.st_size > kMaxLogBytes) {
    ::rename(path.c_str(), (path.native() + ".old").c_str());
  }
  return FileDescriptor(
      ::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NOFOLLOW, 0600));
}

void Report(int descriptor, const LaunchReport& report) {
  [[maybe_unused]] const ssize_t written = ::write(descriptor, &report, sizeof report);
}

// The service would inherit the caller's signal mask and ignored signals.
void ResetSignals() {
  for (int number = 1; number < NSIG; ++number)
    ::signal(number, SIG_DFL);
  sigset_t none;
  sigemptyset(&none);
  ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

bool PlaceDescriptors(Prepared& prepared) {
  for (int* each :
       {&prepared.channel, &prepared.lock, &prepared.report, &prepared.input, &prepared.output}) {
    *each = ::fcntl(*each, F_DUPFD_CLOEXEC, kAboveInherited);
    if (*each < 0) return false;
  }
  const bool placed = ::dup2(prepared.input, STDIN_FILENO) >= 0 &&
                      ::dup2(prepared.output, STDOUT_FILENO) >= 0 &&
                      ::dup2(prepared.output, STDERR_FILENO) >= 0 &&
                      ::dup2(prepared.channel, kInheritedChannel) >= 0 &&
                      ::dup2(prepared.lock, kInheritedLock) >= 0;
  return placed && ::close_range(kInheritedLock + 1, ~0U, CLOSE_RANGE_CLOEXEC) == 0;
}

[[noreturn]] void BecomeService(Prepared& prepared) {
  ResetSignals();
  if (PlaceDescriptors(prepared) && ::chdir(prepared.folder) == 0) {
    ::execve(prepared.words[0], prepared.words.data(), prepared.environment.data());
  }
  Report(prepared.report, {0, errno});
  ::_exit(127);
}

// The intermediate process: it forks the service's process and exits, so that init adopts it.
[[noreturn]] void ForkService(Prepared& prepared) {
  ::setsid();
  const pid_t pid = ::fork();
  if (pid == 0) BecomeService(prepared);
  Report(prepared.report, {pid, pid < 0 ? errno : 0});
  ::_exit(0);
}

// Reads until both processes have closed the pipe, by exec or exit.
DWORD ReadReports(int descriptor, pid_t& pid) {
  DWORD error = NO_ERROR;
  LaunchReport report;
  while (true) {
    const ssize_t bytes = ::read(descriptor, &report, sizeof report);
    if (bytes < 0 && errno == EINTR) continue;
    if (bytes != sizeof report) return error;
    if (report.pid > 0) pid = report.pid;
    if (report.error != 0) {
      error = report.error == ENOEXEC ? ERROR_BAD_EXE_FORMAT : ErrorFromErrno(report.error);
    }
  }
}

}  // namespace

DWORD LaunchServiceProcess(const ServiceProcess& process, pid_t& pid) {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) return ErrorFromErrno(errno);
  const FileDescriptor reading(ends[0]);
  FileDescriptor writing(ends[1]);
  const FileDescriptor input(::open("/dev/null", O_RDONLY | O_CLOEXEC));
  const FileDescriptor output = OpenLog(process.log);
  if (!input.IsOpen() || !output.IsOpen()) return ErrorFromErrno(errno);
  Prepared prepared{Pointers(process.words),
                    Pointers(process.environment),
                    process.folder.c_str(),
                    input.Get(),
                    output.Get(),
                    process.channel,
                    process.lock,
                    writing.Get()};
  const pid_t intermediate = ::fork();
  if (intermediate < 0) return ErrorFromErrno(errno);
  if (intermediate == 0) ForkService(prepared);
  writing.Reset();
  const DWORD error = ReadReports(reading.Get(), pid);
  while (::waitpid(intermediate, nullptr, 0) < 0 && errno == EINTR) {
  }
  return error;
}

}  // namespace platform
