#include "platform/kernel/trusted_path.h"

#include <sys/auxv.h>
#include <sys/stat.h>
#include <unistd.h>
#include <winerror.h>

#include <cerrno>
#include <cstdint>
#include <fstream>
#include <list>

#include "platform/kernel/log.h"
#include "platform/kernel/system_error.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

constexpr int kMostLinks = 40;  // as many as the kernel follows

// Whether the owner has no number in this process's user namespace. All such owners appear as the
// overflow user, root among them, and are indistinguishable. They are trusted: a process in the
// namespace has no rights over the machine, only those of the user that created the namespace.
bool IsUnmappedOwner(uid_t user) {
  uid_t overflowUser = 65534;
  std::ifstream("/proc/sys/kernel/overflowuid") >> overflowUser;
  std::ifstream map("/proc/self/uid_map");
  if (user != overflowUser || !map.is_open()) return false;
  std::uint64_t inside = 0;
  std::uint64_t outside = 0;
  std::uint64_t count = 0;
  while (map >> inside >> outside >> count) {
    if (user >= inside && user - inside < count) return false;  // a mapped user's own number
  }
  return true;
}

bool IsTrustedUser(uid_t user) {
  return user == 0 || (!IsPrivileged() && user == ::geteuid()) || IsUnmappedOwner(user);
}

bool IsTrustedGroup(gid_t group) {
  return group == 0 || (!IsPrivileged() && group == ::getegid());
}

// Why users that are not trusted can write to the file or replace its contents; empty when they
// cannot. The mode of a link is ignored: the folder that contains it decides who can replace it.
std::string UntrustedWriter(const struct stat& status) {
  if (!IsTrustedUser(status.st_uid)) return "belongs to user " + std::to_string(status.st_uid);
  if (S_ISLNK(status.st_mode)) return {};
  if ((status.st_mode & S_IWOTH) != 0) return "can be written by everybody";
  if ((status.st_mode & S_IWGRP) != 0 && !IsTrustedGroup(status.st_gid)) {
    return "can be written by group " + std::to_string(status.st_gid);
  }
  return {};
}

// Walks down from "/", so that nothing below an untrusted folder is examined.
class PathWalk {
 public:
  explicit PathWalk(const fs::path& path) : left_(path.begin(), path.end()) {}

  DWORD Judge(std::string& reason) {
    struct stat status {};
    while (!left_.empty()) {
      if (!Enter()) continue;
      if (::lstat(current_.c_str(), &status) != 0) return ErrorFromErrno(errno);
      const bool entriesAreSafe = S_ISDIR(status.st_mode) && (status.st_mode & S_ISVTX) != 0 &&
                                  IsTrustedUser(status.st_uid);
      if (!entriesAreSafe && !IsTrusted(status, reason)) return ERROR_ACCESS_DENIED;
      if (S_ISLNK(status.st_mode) && !Follow()) return ERROR_PATH_NOT_FOUND;
    }
    if (::lstat(current_.c_str(), &status) != 0) return ErrorFromErrno(errno);
    return IsTrusted(status, reason) ? NO_ERROR : ERROR_ACCESS_DENIED;
  }

 private:
  // Consumes one name. True when the path has become one that was not judged before.
  bool Enter() {
    const fs::path name = std::move(left_.front());
    left_.pop_front();
    if (name.empty() || name == ".") return false;
    if (name == "..") {
      current_ = current_.parent_path();
      return false;
    }
    current_ /= name;  // the name "/" replaces the path
    return true;
  }

  bool Follow() {
    std::error_code error;
    const fs::path target = fs::read_symlink(current_, error);
    if (error || ++links_ > kMostLinks) return false;
    current_ = current_.parent_path();
    left_.insert(left_.begin(), target.begin(), target.end());
    return true;
  }

  bool IsTrusted(const struct stat& status, std::string& reason) const {
    const std::string other = UntrustedWriter(status);
    if (!other.empty()) reason = current_.string() + ' ' + other;
    return other.empty();
  }

  std::list<fs::path> left_;
  fs::path current_;
  int links_ = 0;
};

}  // namespace

bool IsPrivileged() {
  return ::geteuid() == 0 || ::getauxval(AT_SECURE) != 0;
}

DWORD JudgePath(const fs::path& path, std::string& reason) {
  std::error_code error;
  const fs::path absolute = fs::absolute(path, error);
  return error ? ErrorFromErrno(error.value()) : PathWalk(absolute).Judge(reason);
}

DWORD RequireTrusted(const fs::path& path, std::string_view what) {
  std::string reason;
  const DWORD error = JudgePath(path, reason);
  if (error == ERROR_ACCESS_DENIED) {
    if (reason.empty()) reason = "it cannot be looked at";
    LogLine(std::string(what) + ": " + path.string() + " is not trusted: " + reason);
  }
  return error;
}

}  // namespace platform
