#include "platform/user/desktop_probe.h"

#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <string>

#include "platform/kernel/linux_poll.h"
#include "platform/kernel/oom_score.h"

namespace platform {

namespace {

// Includes the time to load the program from a slow disk. The probe itself limits how long it waits
// for the display server.
constexpr auto kTimeout = std::chrono::seconds(15);

bool AwaitByte(int descriptor) {
  char word = 0;
  return AwaitInput(descriptor, std::chrono::steady_clock::now() + kTimeout) &&
         ::read(descriptor, &word, 1) == 1;
}

}  // namespace

DesktopProbe::DesktopProbe(const std::filesystem::path& folder) {
  if (Start(folder / "windesktop_probe")) reached_ = AwaitByte(connection_.Get());
}

// The program gets the other end of the socket pair as its standard input. It writes one byte when
// it has reached the desktop, and exits when the socket is closed.
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
  // The child may still be waiting for the display server.
  ::kill(process_, SIGKILL);
  while (::waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
  }
}

}  // namespace platform
