#include "platform/shell/tray_desktop.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>

ChildProcess::ChildProcess(const std::string& command)
    : output_(::popen(("echo $$; exec " + command + " </dev/null 2>/dev/null").c_str(), "re")),
      process_(std::stoi(ReadLine())) {}

ChildProcess::~ChildProcess() {
  Send(SIGTERM);
  ::pclose(output_);
}

std::string ChildProcess::ReadLine() {
  std::string line;
  for (int letter = std::fgetc(output_); letter != EOF && letter != '\n';
       letter = std::fgetc(output_)) {
    line += static_cast<char>(letter);
  }
  return line;
}

bool TrayDesktop::IsInstalled() {
  return std::system("which Xvfb openbox tint2 >/dev/null 2>&1") == 0;
}

TrayDesktop::TrayDesktop()
    : configuration_(std::filesystem::temp_directory_path() /
                     ("tray-" + std::to_string(::getpid()))),
      screen_("Xvfb -displayfd 1 -screen 0 800x600x24 -nolisten tcp"),
      display_(screen_.ReadLine()) {
  std::ofstream(configuration_)
      << "panel_items = TS\npanel_size = 100% 28\nsystray_icon_size = 20\n";
  ::setenv("DISPLAY", (":" + display_).c_str(), 1);
  ::setenv("QT_QPA_PLATFORM", "xcb", 1);
  // The user's own session may have an area on its message bus.
  ::setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent", 1);
  // The panel waits for a window manager.
  manager_ = std::make_unique<ChildProcess>("openbox >/dev/null");
}

TrayDesktop::~TrayDesktop() {
  ::unsetenv("DISPLAY");
  ::unsetenv("QT_QPA_PLATFORM");
  panel_.reset();
  manager_.reset();
  std::filesystem::remove(configuration_);
}

void TrayDesktop::StartPanel() {
  panel_ = std::make_unique<ChildProcess>("tint2 -c " + configuration_.string() + " >/dev/null");
}
