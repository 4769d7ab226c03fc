// A screen with a panel whose notification area can come and go: Xvfb, openbox and tint2, where
// they are installed.
#pragma once

#include <sys/types.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

// A program that runs until the object's end.
class ChildProcess {
 public:
  // A command of the shell, which must be one program's.
  explicit ChildProcess(const std::string& command)
      : output_(::popen(("echo $$; exec " + command + " </dev/null 2>/dev/null").c_str(), "re")),
        process_(std::stoi(ReadLine())) {}
  ~ChildProcess() {
    Send(SIGTERM);
    ::pclose(output_);
  }
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  // The next line that it writes, without the line break; empty at the end.
  std::string ReadLine() {
    std::string line;
    char letter = '\0';
    while (std::fread(&letter, 1, 1, output_) == 1 && letter != '\n')
      line += letter;
    return line;
  }
  void Send(int signal) const { ::kill(process_, signal); }

 private:
  FILE* output_;
  pid_t process_;
};

class TrayDesktop {
 public:
  // Starts the screen and names it in the environment.
  TrayDesktop() {
    std::ofstream(configuration_)
        << "panel_items = TS\npanel_size = 100% 28\nsystray_icon_size = 20\n";
    ::setenv("DISPLAY", (":" + display_).c_str(), 1);
    ::setenv("QT_QPA_PLATFORM", "xcb", 1);
    // The user's own session may have an area on its message bus.
    ::setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent", 1);
    // The panel waits for a window manager.
    manager_ = std::make_unique<ChildProcess>("openbox >/dev/null");
  }
  ~TrayDesktop() {
    ::unsetenv("DISPLAY");
    ::unsetenv("QT_QPA_PLATFORM");
    std::filesystem::remove(configuration_);
  }
  TrayDesktop(const TrayDesktop&) = delete;
  TrayDesktop& operator=(const TrayDesktop&) = delete;

  static bool IsInstalled() { return std::system("which Xvfb openbox tint2 >/dev/null 2>&1") == 0; }
  bool IsRunning() const { return !display_.empty(); }
  void StartPanel() {
    panel_ = std::make_unique<ChildProcess>("tint2 -c " + configuration_.string() + " >/dev/null");
  }
  void StopPanel() { panel_.reset(); }
  void SendScreen(int signal) { screen_.Send(signal); }

 private:
  const std::filesystem::path configuration_ =
      std::filesystem::temp_directory_path() / ("tray-" + std::to_string(::getpid()));
  ChildProcess screen_{"Xvfb -displayfd 1 -screen 0 800x600x24 -nolisten tcp"};
  const std::string display_ = screen_.ReadLine();
  std::unique_ptr<ChildProcess> manager_;
  std::unique_ptr<ChildProcess> panel_;
};
