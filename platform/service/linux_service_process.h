// Starts the process of a service as a daemon: it is no child of this process, has a POSIX session
// of its own and no terminal, and writes its output to a log file. Any thread.
#pragma once

#include <sys/types.h>
#include <windef.h>

#include <filesystem>
#include <string>
#include <vector>

namespace platform {

struct ServiceProcess {
  std::vector<std::string> words;        // the program's path, then its arguments
  std::vector<std::string> environment;  // "NAME=value"
  std::filesystem::path folder;          // its working directory
  std::filesystem::path log;
  int channel = -1;  // inherited as kInheritedChannel
  int lock = -1;     // inherited as kInheritedLock
};

// 0 with `pid` set, or the error with which fork or exec failed.
DWORD LaunchServiceProcess(const ServiceProcess& process, pid_t& pid);

}  // namespace platform
