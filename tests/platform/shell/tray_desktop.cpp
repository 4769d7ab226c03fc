#include "tray_desktop.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>

namespace {

constexpr int kPatienceMilliseconds = 20'000;

bool IsInPath(const std::string& program) {
  return std::filesystem::exists("/usr/bin/" + program);
}

// What the program writes in its first line; empty when it does not in time.
std::string ReadLine(int descriptor) {
  std::string line;
  pollfd readable{descriptor, POLLIN, 0};
  char letter = 0;
  while (::poll(&readable, 1, kPatienceMilliseconds) == 1 && ::read(descriptor, &letter, 1) == 1) {
    if (letter == '\n') return line;
    line += letter;
  }
  return {};
}

}  // namespace

ChildProcess::ChildProcess(std::vector<std::string> command, int kept) {
  std::vector<char*> words;
  for (std::string& word : command)
    words.push_back(word.data());
  words.push_back(nullptr);
  process_ = ::fork();
  if (process_ != 0) return;
  const int silence = ::open("/dev/null", O_RDWR);
  for (const int standard : {0, 1, 2})
    ::dup2(silence, standard);
  if (kept >= 0) ::fcntl(kept, F_SETFD, 0);
  ::execvp(words[0], words.data());
  ::_exit(EXIT_FAILURE);
}

ChildProcess::~ChildProcess() {
  if (process_ <= 0) return;
  ::kill(process_, SIGTERM);
  ::waitpid(process_, nullptr, 0);
}

bool TrayDesktop::IsInstalled() {
  return IsInPath("Xvfb") && IsInPath("openbox") && IsInPath("tint2");
}

TrayDesktop::TrayDesktop() {
  std::string pattern = (std::filesystem::temp_directory_path() / "tray-XXXXXX").string();
  const int file = ::mkstemp(pattern.data());
  ::close(file);
  configuration_ = pattern;
  std::ofstream(configuration_)
      << "panel_items = TS\npanel_size = 100% 28\nsystray_icon_size = 20\n";
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) return;
  screen_ = std::make_unique<ChildProcess>(
      std::vector<std::string>{"Xvfb", "-displayfd", std::to_string(ends[1]), "-screen", "0",
                               "800x600x24", "-nolisten", "tcp"},
      ends[1]);
  ::close(ends[1]);
  display_ = ReadLine(ends[0]);
  ::close(ends[0]);
  ::setenv("DISPLAY", (":" + display_).c_str(), 1);
  ::setenv("QT_QPA_PLATFORM", "xcb", 1);
  // The user's own session may have an area on its message bus.
  ::setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent", 1);
  // The panel waits for a window manager.
  manager_ = std::make_unique<ChildProcess>(std::vector<std::string>{"openbox"});
}

TrayDesktop::~TrayDesktop() {
  ::unsetenv("DISPLAY");
  ::unsetenv("QT_QPA_PLATFORM");
  panel_.reset();
  manager_.reset();
  screen_.reset();
  std::filesystem::remove(configuration_);
}

void TrayDesktop::StartPanel() {
  panel_ = std::make_unique<ChildProcess>(
      std::vector<std::string>{"tint2", "-c", configuration_.string()});
}
