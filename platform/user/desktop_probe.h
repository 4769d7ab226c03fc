// A process that tries to reach the desktop before this one does: the toolkit ends the process when
// it cannot. It stays connected as long as the object lives, so that the desktop is not gone again
// in between (some display servers go with their last client). Used by one thread.
#pragma once

#include <sys/types.h>

#include <filesystem>

#include "platform/kernel/file_descriptor.h"

namespace platform {

class DesktopProbe {
 public:
  // Starts the program "windesktop_probe" of that folder and waits for what it finds, a limited
  // time.
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
