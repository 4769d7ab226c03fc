#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <winerror.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <string>
#include <system_error>
#include <utility>

#include "platform/kernel/file_descriptor.h"
#include "platform/kernel/linux_poll.h"
#include "platform/kernel/log.h"
#include "platform/kernel/modules.h"
#include "platform/kernel/oom_score.h"
#include "platform/kernel/trusted_path.h"
#include "platform/shell/help_reader.h"
#include "platform/shell/help_stream.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

constexpr auto kTimeout = std::chrono::seconds(10);
constexpr std::size_t kBufferSize = 64 * 1'024;

// The decoding process. Its standard output is the stream.
class ReaderProcess {
 public:
  ReaderProcess(const fs::path& program, const fs::path& file);
  ~ReaderProcess();
  ReaderProcess(const ReaderProcess&) = delete;
  ReaderProcess& operator=(const ReaderProcess&) = delete;

  // The whole stream; nothing when the process failed, wrote too much or took too long.
  std::optional<std::string> Read();

 private:
  bool AwaitEnd();

  FileDescriptor output_;
  pid_t process_ = -1;
};

ReaderProcess::ReaderProcess(const fs::path& program, const fs::path& file) {
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) return;
  output_.Reset(ends[0]);
  const FileDescriptor theirs(ends[1]);
  posix_spawn_file_actions_t actions;
  if (::posix_spawn_file_actions_init(&actions) != 0) return;
  ::posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  ::posix_spawn_file_actions_adddup2(&actions, theirs.Get(), STDOUT_FILENO);
  std::string name = program.string();
  std::string argument = file.string();
  char* arguments[] = {name.data(), argument.data(), nullptr};
  const int error = ::posix_spawn(&process_, name.c_str(), &actions, nullptr, arguments, ::environ);
  ::posix_spawn_file_actions_destroy(&actions);
  if (error != 0) process_ = -1;
  if (error == 0) ExposeToOomKiller(process_);
}

std::optional<std::string> ReaderProcess::Read() {
  if (process_ < 0) return std::nullopt;
  const auto end = std::chrono::steady_clock::now() + kTimeout;
  std::string stream;
  std::array<char, kBufferSize> buffer{};
  while (AwaitInput(output_.Get(), end)) {
    const ssize_t count = ::read(output_.Get(), buffer.data(), buffer.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return std::nullopt;
    if (count == 0) return AwaitEnd() ? std::optional(std::move(stream)) : std::nullopt;
    stream.append(buffer.data(), static_cast<std::size_t>(count));
    if (stream.size() > kMostHelpBytes) return std::nullopt;
  }
  return std::nullopt;
}

// True when the process has ended without failure. One that has closed its output does nothing more
// than end.
bool ReaderProcess::AwaitEnd() {
  int status = 0;
  while (::waitpid(process_, &status, 0) < 0 && errno == EINTR) {
  }
  process_ = -1;
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

ReaderProcess::~ReaderProcess() {
  if (process_ < 0) return;
  ::kill(process_, SIGKILL);
  AwaitEnd();
}

bool IsReadable(const fs::path& path) {
  if (RequireTrusted(path, "help") != NO_ERROR) return false;
  std::error_code error;
  return fs::is_regular_file(path, error) && fs::file_size(path, error) <= kMostHelpBytes;
}

bool IsInstalled(const fs::path& program) {
  const DWORD error = RequireTrusted(program, "help");
  if (error == ERROR_FILE_NOT_FOUND) LogLine("help: the reader is not installed");
  return error == NO_ERROR;
}

std::optional<HelpFile> Decode(const fs::path& path) {
  const fs::path program = ExecutablePath().parent_path() / "winhelp_reader";
  if (!IsReadable(path) || !IsInstalled(program)) return std::nullopt;
  const auto stream = ReaderProcess(program, path).Read();
  return stream.has_value() ? ParseHelpStream(*stream) : std::nullopt;
}

}  // namespace

std::optional<HelpFile> ReadHelpFile(const fs::path& path) {
  auto file = Decode(path);
  if (!file.has_value()) LogLine("help: " + path.string() + " cannot be read");
  return file;
}

}  // namespace platform
