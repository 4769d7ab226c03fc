#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include "owned_file.h"

namespace quillgate::engine {

namespace {

constexpr mode_t kOwnerOnly = S_IRUSR | S_IWUSR;

void RefuseWhatIsNoFile(const std::string& path, const struct stat& status) {
  if (S_ISLNK(status.st_mode)) Fail("it is a link", path);
  if (S_ISDIR(status.st_mode)) Fail("it is a folder", path);
  if (!S_ISREG(status.st_mode)) Fail("it is not a file", path);
}

}  // namespace

std::string FullPath(const std::string& givenPath) {
  std::string path = givenPath;
  std::ranges::replace(path, '\\', '/');
  std::error_code error;
  const std::filesystem::path full = std::filesystem::absolute(path, error);
  if (error) Fail(error.message(), path);
  return full.native();
}

// An existing file is never opened and closed here: that would drop the locks that another
// connection of this process has on it. SQLite creates its files with the mode of this one.
void MakeFile(const std::string& path) {
  const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kOwnerOnly);
  if (file >= 0) {
    ::close(file);
  } else if (errno != EEXIST) {
    Fail(std::strerror(errno), path);
  }
}

// Works on the path: closing a descriptor of a file drops the locks that other connections of this
// process have on it.
void KeepFromOthers(const std::string& path) {
  struct stat status {};
  int result = ::lstat(path.c_str(), &status);
  if (result == 0) {
    RefuseWhatIsNoFile(path, status);
    if (status.st_uid != ::geteuid()) Fail("it belongs to another user", path);
    if ((status.st_mode & ALLPERMS) == kOwnerOnly) return;
    result = ::fchmodat(AT_FDCWD, path.c_str(), kOwnerOnly, AT_SYMLINK_NOFOLLOW);
  }
  // A missing file, or one removed meanwhile, will be created with the mode of the database file.
  if (result != 0 && errno != ENOENT) Fail(std::strerror(errno), path);
}

}  // namespace quillgate::engine
