// A screen with a panel whose notification area can come and go: Xvfb, openbox and tint2, where
// they are installed.
#pragma once

#include <sys/types.h>

#include <csignal>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

class ChildProcess {
 public:
  // The program is looked for in the path. `kept` stays open in it.
  explicit ChildProcess(std::vector<std::string> command, int kept = -1);
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  void Send(int signal) const { ::kill(process_, signal); }

 private:
  pid_t process_ = -1;
};

class TrayDesktop {
 public:
  // Starts the screen and names it in the environment.
  TrayDesktop();
  ~TrayDesktop();
  TrayDesktop(const TrayDesktop&) = delete;
  TrayDesktop& operator=(const TrayDesktop&) = delete;

  static bool IsInstalled();
  bool IsRunning() const { return !display_.empty(); }
  void StartPanel();
  void StopPanel() { panel_.reset(); }
  void SendScreen(int signal) { screen_->Send(signal); }

 private:
  std::filesystem::path configuration_;
  std::string display_;
  std::unique_ptr<ChildProcess> screen_;
  std::unique_ptr<ChildProcess> manager_;
  std::unique_ptr<ChildProcess> panel_;
};
