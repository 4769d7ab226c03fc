// Puts the test process into network and mount namespaces of its own, as root or through a user
// namespace, so that a test may make interfaces and cover files of /etc. They end with the process.
// To be called before the process has other threads.
#pragma once

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace own_namespaces {

inline bool WriteFile(const char* path, const std::string& text) {
  std::ofstream file(path);
  file << text << std::flush;
  return file.good();
}

// Empty, or why it cannot be done here. Calling it again is fine.
inline std::string Enter() {
  static const std::string result = []() -> std::string {
    const std::string user = std::to_string(::getuid());
    const std::string group = std::to_string(::getgid());
    if (::unshare(CLONE_NEWNET | CLONE_NEWNS) != 0) {
      if (::unshare(CLONE_NEWUSER | CLONE_NEWNET | CLONE_NEWNS) != 0) return "no namespaces";
      WriteFile("/proc/self/setgroups", "deny");
      if (!WriteFile("/proc/self/uid_map", "0 " + user + " 1") ||
          !WriteFile("/proc/self/gid_map", "0 " + group + " 1")) {
        return "no user namespace";
      }
    }
    if (::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) return "no mounts";
    return std::system("ip link set lo up") == 0 ? "" : "no command ip";
  }();
  return result;
}

// Covers a file with another text until the process ends.
inline bool CoverFile(const char* path, const std::string& text) {
  std::string pattern = (std::filesystem::temp_directory_path() / "covering-XXXXXX").string();
  const int file = ::mkstemp(pattern.data());
  if (file < 0) return false;
  const auto written = ::write(file, text.data(), text.size());
  ::fchmod(file, 0644);
  ::close(file);
  const bool covered = written == static_cast<ssize_t>(text.size()) &&
                       ::mount(pattern.c_str(), path, nullptr, MS_BIND, nullptr) == 0;
  ::unlink(pattern.c_str());
  return covered;
}

// Runs a shell command.
inline bool Succeeds(const std::string& command) {
  return std::system(command.c_str()) == 0;
}

}  // namespace own_namespaces
