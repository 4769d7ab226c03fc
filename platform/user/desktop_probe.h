// A child process that connects to the desktop before this process does, because the toolkit ends a
// process that cannot connect. The child stays connected as long as the object lives: some display
// servers exit with their last client. For one thread.
#pragma once

#include <sys/types.h>

#include <filesystem>

#include "platform/kernel/file_descriptor.h"

namespace platform {

class DesktopProbe {
 public:
  // Starts the program "windesktop_probe" in the folder and waits, for a limited time, for it to
  // report that it has connected.
  explicit DesktopProbe(const std::filesystem::path& folder);
  ~DesktopProbe();
  DesktopProbe(const DesktopProbe&) = delete;
  DesktopProbe& operator=(const DesktopProbe&) = delete;

  bool HasReachedDesktop() const { return reached_; }

 private:
  bool Start(const std::filesystem::path& program);

  FileDescriptor connection_;
  pid_t process_ = -1;
  bool reached_ = false;
};

}  // namespace platform
