#include "platform/service/own_keeper.h"

#include <signal.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <winerror.h>

#include <array>
#include <cerrno>

#include "platform/kernel/encoding.h"
#include "platform/kernel/log.h"
#include "platform/kernel/path.h"
#include "platform/kernel/system_error.h"
#include "platform/service/linux_service_process.h"
#include "platform/service/service_channel.h"
#include "platform/service/service_claim.h"
#include "platform/service/service_files.h"
#include "platform/service/service_program.h"
#include "platform/service/service_state.h"

namespace platform {
namespace {

// What is passed on, a fixed PATH, the service's name, and the root folder as an absolute path.
std::vector<std::string> Environment(std::wstring_view name) {
  std::vector<std::string> variables = PassedOnVariables();
  variables.push_back("PATH=" + std::string(kServicePath));
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

DWORD StartProcess(const ServiceRecord& record, int lock) {
  std::array<int, 2> ends{};
  if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0) {
    return ErrorFromErrno(errno);
  }
  const FileDescriptor ours(ends[0]);
  FileDescriptor theirs(ends[1]);
  ServiceProcess process;
  process.words = ProgramWords(record);
  if (process.words.empty()) return ERROR_FILE_NOT_FOUND;
  const DWORD refusal = RequireTrustedProgram(record, process.words);
  if (refusal != NO_ERROR) return refusal;
  process.environment = Environment(record.name);
  process.folder = std::filesystem::absolute(SystemFolder());
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

DWORD OwnKeeper::Start(const ServiceRecord& record) {
  ServiceRecord claimed = record;
  FileDescriptor lock;
  DWORD error = ClaimService(claimed, lock);
  if (error != NO_ERROR) return error;
  error = StartProcess(claimed, lock.Get());
  if (error != NO_ERROR) PublishState(claimed.name, StoppedState(claimed.type, error));
  return error;
}

}  // namespace platform
