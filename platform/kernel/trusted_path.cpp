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

// In a user namespace, all owners that have no number there show as one, and root is among them:
// its files carry no other sign. A process that lives there has no rights over the machine, only
// those of whoever made the namespace.
bool IsNamelessOwner(uid_t user) {
  uid_t nameless = 65534;
  std::ifstream("/proc/sys/kernel/overflowuid") >> nameless;
  std::ifstream map("/proc/self/uid_map");
  if (user != nameless || !map.is_open()) return false;
  std::uint64_t inside = 0;
  std::uint64_t outside = 0;
  std::uint64_t count = 0;
  while (map >> inside >> outside >> count) {
    if (user >= inside && user - inside < count) return false;  // somebody's own number
  }
  return true;
}

bool IsTrustedUser(uid_t user) {
  return user == 0 || (!IsPrivileged() && user == ::geteuid()) || IsNamelessOwner(user);
}

bool IsTrustedGroup(gid_t group) {
  return group == 0 || (!IsPrivileged() && group == ::getegid());
}

// Empty when only trusted users can write to it or replace its contents. A link has no contents
// that could be written: its folder says who can replace it.
std::string WhoElseWrites(const struct stat& status) {
  if (!IsTrustedUser(status.st_uid)) return "belongs to user " + std::to_string(status.st_uid);
  if (S_ISLNK(status.st_mode)) return {};
  if ((status.st_mode & S_IWOTH) != 0) return "can be written by everybody";
  if ((status.st_mode & S_IWGRP) != 0 && !IsTrustedGroup(status.st_gid)) {
    return "can be written by group " + std::to_string(status.st_gid);
  }
  return {};
}

// Walks from the root folder, so that nothing is looked at below what is not trusted.
class PathWalk {
 public:
  explicit PathWalk(const fs::path& path) : left_(path.begin(), path.end()) {}

  DWORD Judge(std::string& reason) {
    struct stat status {};
    while (!left_.empty()) {
      if (!Enter()) continue;
      if (::lstat(place_.c_str(), &status) != 0) return ErrorFromErrno(errno);
      const bool entriesAreSafe = S_ISDIR(status.st_mode) && (status.st_mode & S_ISVTX) != 0 &&
                                  IsTrustedUser(status.st_uid);
      if (!entriesAreSafe && !IsTrusted(status, reason)) return ERROR_ACCESS_DENIED;
      if (S_ISLNK(status.st_mode) && !Follow()) return ERROR_PATH_NOT_FOUND;
    }
    if (::lstat(place_.c_str(), &status) != 0) return ErrorFromErrno(errno);
    return IsTrusted(status, reason) ? NO_ERROR : ERROR_ACCESS_DENIED;
  }

 private:
  // Takes one name; whether that leads to a place that was not judged before.
  bool Enter() {
    const fs::path name = std::move(left_.front());
    left_.pop_front();
    if (name.empty() || name == ".") return false;
    if (name == "..") {
      place_ = place_.parent_path();
      return false;
    }
    place_ /= name;  // the root folder's replaces what stands before it
    return true;
  }

  bool Follow() {
    std::error_code error;
    const fs::path target = fs::read_symlink(place_, error);
    if (error || ++links_ > kMostLinks) return false;
    place_ = place_.parent_path();
    left_.insert(left_.begin(), target.begin(), target.end());
    return true;
  }

  bool IsTrusted(const struct stat& status, std::string& reason) const {
    const std::string other = WhoElseWrites(status);
    if (!other.empty()) reason = place_.string() + ' ' + other;
    return other.empty();
  }

  std::list<fs::path> left_;
  fs::path place_;
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
