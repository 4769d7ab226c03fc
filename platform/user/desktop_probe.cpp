#include "platform/user/desktop_probe.h"

#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>

#include <cerrno>
#include <string>

#include "platform/kernel/oom_score.h"

namespace platform {

DesktopProbe::DesktopProbe(const std::filesystem::path& folder) {
  if (!Start(folder / "windesktop_probe")) return;
  char word = 0;
  ssize_t length = 0;
  do {
    length = ::read(connection_.Get(), &word, 1);
  } while (length < 0 && errno == EINTR);
  reached_ = length == 1;
}

// The program has the other end of the connection as its standard input: it writes one byte when it
// has reached the desktop, and ends when the connection does.
bool DesktopProbe::Start(const std::filesystem::path& program) {
  int ends[2];
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) return false;
  connection_.Reset(ends[0]);
  const FileDescriptor theirs(ends[1]);
  posix_spawn_file_actions_t actions;
  if (::posix_spawn_file_actions_init(&actions) != 0) return false;
  ::posix_spawn_file_actions_adddup2(&actions, theirs.Get(), STDIN_FILENO);
  std::string name = program.string();
  char* arguments[] = {name.data(), nullptr};
  const int error = ::posix_spawn(&process_, name.c_str(), &actions, nullptr, arguments, ::environ);
  ::posix_spawn_file_actions_destroy(&actions);
  if (error != 0) process_ = -1;
  if (error == 0) ExposeToOomKiller(process_);
  return error == 0;
}

DesktopProbe::~DesktopProbe() {
  connection_.Reset();
  if (process_ < 0) return;
  while (::waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
  }
}

}  // namespace platform
