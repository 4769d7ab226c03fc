#include "platform/registry/hive_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#include <winerror.h>

#include <cerrno>
#include <string>

#include "platform/kernel/log.h"
#include "platform/kernel/system_error.h"
#include "platform/registry/hive_text.h"

namespace platform {
namespace {

constexpr std::size_t kMaximumHiveBytes = 64 * 1024 * 1024;

bool SameTime(const timespec& left, const timespec& right) {
  return left.tv_sec == right.tv_sec && left.tv_nsec == right.tv_nsec;
}

bool SameFile(const struct stat& left, const struct stat& right) {
  return left.st_dev == right.st_dev && left.st_ino == right.st_ino &&
         left.st_size == right.st_size && SameTime(left.st_mtim, right.st_mtim) &&
         SameTime(left.st_ctim, right.st_ctim);
}

DWORD ReadAll(int file, std::string& text) {
  std::size_t size = 0;
  for (;;) {
    constexpr std::size_t kPiece = 64 * 1024;
    text.resize(size + kPiece);
    const ssize_t got = ::read(file, text.data() + size, kPiece);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return ERROR_CANTREAD;
    size += static_cast<std::size_t>(got);
    if (size > kMaximumHiveBytes) return ERROR_REGISTRY_CORRUPT;
    if (got == 0) break;
  }
  text.resize(size);
  return NO_ERROR;
}

DWORD WriteAll(int file, std::string_view text) {
  while (!text.empty()) {
    const ssize_t put = ::write(file, text.data(), text.size());
    if (put < 0 && errno == EINTR) continue;
    if (put <= 0) return ErrorFromErrno(errno);
    text.remove_prefix(static_cast<std::size_t>(put));
  }
  return ::fsync(file) == 0 ? NO_ERROR : ErrorFromErrno(errno);
}

// Makes a rename in the folder durable.
void SyncFolder(const std::filesystem::path& folder) {
  const FileDescriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!descriptor.IsOpen() || ::fsync(descriptor.Get()) != 0) {
    LogLine("the registry's folder could not be synchronised: " + folder.string());
  }
}

}  // namespace

HiveFile::HiveFile(std::filesystem::path path) : path_(std::move(path)) {
  ::mkdir(path_.parent_path().c_str(), 0700);
}

bool HiveFile::IsUnchanged() const {
  struct stat status {};
  if (!loaded_) return false;
  if (::lstat(path_.c_str(), &status) != 0) return errno == ENOENT && !file_.IsOpen();
  return file_.IsOpen() && SameFile(status, status_);
}

DWORD HiveFile::Read(const HiveKey*& root) {
  if (!IsUnchanged()) {
    loaded_ = false;
    const DWORD error = Load();
    if (error != NO_ERROR) return error;
  }
  root = &root_;
  return NO_ERROR;
}

DWORD HiveFile::Load() {
  // O_NONBLOCK: opening does not wait when the path is a pipe.
  FileDescriptor file(::open(path_.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW));
  if (!file.IsOpen()) {
    if (errno != ENOENT) return errno == EACCES ? ERROR_ACCESS_DENIED : ERROR_CANTOPEN;
    Remember({}, {});
    return NO_ERROR;
  }
  struct stat status {};
  if (::fstat(file.Get(), &status) != 0) return ERROR_CANTREAD;
  std::string text;
  DWORD error = S_ISREG(status.st_mode) ? ReadAll(file.Get(), text) : ERROR_REGISTRY_CORRUPT;
  if (error == NO_ERROR) {
    std::optional<HiveKey> root = ReadHive(text);
    if (root) {
      Remember(std::move(*root), std::move(file));
      // The status from before the reading, so that the next Read notices a change since then.
      status_ = status;
      return NO_ERROR;
    }
    error = ERROR_REGISTRY_CORRUPT;
  }
  if (!errorLogged_) LogLine("the registry cannot be read: " + path_.string());
  errorLogged_ = true;
  return error;
}

void HiveFile::Remember(HiveKey root, FileDescriptor file) {
  root_ = std::move(root);
  file_ = std::move(file);
  if (file_.IsOpen()) ::fstat(file_.Get(), &status_);
  loaded_ = true;
  errorLogged_ = false;
}

DWORD HiveFile::LockForWriting(FileDescriptor& lock) {
  const std::filesystem::path path = path_.parent_path() / "lock";
  lock.Reset(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
  if (!lock.IsOpen()) return ErrorFromErrno(errno);
  while (::flock(lock.Get(), LOCK_EX) != 0) {
    if (errno != EINTR) return ErrorFromErrno(errno);
  }
  return NO_ERROR;
}

DWORD HiveFile::Write(HiveKey root) {
  const std::string text = WriteHive(root);
  if (text.size() > kMaximumHiveBytes) return ERROR_NOT_ENOUGH_QUOTA;
  const std::string temporary = path_.string() + ".new";
  constexpr int kFlags = O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW;
  FileDescriptor file(::open(temporary.c_str(), kFlags, 0600));
  if (!file.IsOpen()) return ErrorFromErrno(errno);
  DWORD error = WriteAll(file.Get(), text);
  if (error == NO_ERROR && ::rename(temporary.c_str(), path_.c_str()) != 0) {
    error = ErrorFromErrno(errno);
  }
  if (error != NO_ERROR) {
    ::unlink(temporary.c_str());
    return error;
  }
  Remember(std::move(root), std::move(file));
  SyncFolder(path_.parent_path());
  return NO_ERROR;
}

bool HiveFile::IsWritable() const {
  return ::access(path_.parent_path().c_str(), W_OK | X_OK) == 0;
}

}  // namespace platform
