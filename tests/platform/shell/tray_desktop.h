// A screen with a panel whose notification area can come and go: Xvfb, openbox and tint2, where
// they are installed.
#pragma once

#include <sys/types.h>

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

// A program that runs until the object's end.
class ChildProcess {
 public:
  // A command of the shell, which must be one program's.
  explicit ChildProcess(const std::string& command);
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  // The next line that it writes, without the line break; empty at the end.
  std::string ReadLine();
  void Send(int signal) const { ::kill(process_, signal); }

 private:
  FILE* output_;
  pid_t process_;
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
  void SendScreen(int signal) { screen_.Send(signal); }

 private:
  const std::filesystem::path configuration_;
  ChildProcess screen_;
  const std::string display_;
  std::unique_ptr<ChildProcess> manager_;
  std::unique_ptr<ChildProcess> panel_;
};
