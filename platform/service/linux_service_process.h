// A process that is nobody's child: of its own session, without terminal, with its output in a log
// file. Any thread.
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
  std::filesystem::path folder;          // where it starts
  std::filesystem::path log;
  int channel = -1;  // become kInheritedChannel and kInheritedLock
  int lock = -1;
};

// 0 and the process, or the error with which the program could not be run.
DWORD LaunchServiceProcess(const ServiceProcess& process, pid_t& pid);

}  // namespace platform
