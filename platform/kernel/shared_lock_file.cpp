#include "platform/kernel/shared_lock_file.h"

#include <fcntl.h>
#include <winerror.h>

#include <cerrno>

#include "platform/kernel/system_error.h"

namespace platform {
namespace {

constexpr off_t kExistence = 0;
constexpr off_t kOwnership = 1;
constexpr char kFree = 'f';
constexpr char kOwned = 'o';

// Locks of the open file description (F_OFD_...), not of the process: two objects of one process
// exclude each other as two processes do.
bool LockByte(int file, int command, short type, off_t byte) {
  struct flock lock {};
  lock.l_type = type;
  lock.l_whence = SEEK_SET;
  lock.l_start = byte;
  lock.l_len = 1;
  int result = 0;
  do {
    result = ::fcntl(file, command, &lock);
  } while (result != 0 && errno == EINTR);
  return result == 0;
}

bool WriteState(int file, char state) {
  return ::pwrite(file, &state, 1, kOwnership) == 1;
}

}  // namespace

std::unique_ptr<SharedLockFile> SharedLockFile::Open(const std::filesystem::path& path, bool takeIt,
                                                     bool& existed, DWORD& error) {
  FileDescriptor file(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
  if (!file.IsOpen()) {
    error = ErrorFromErrno(errno);
    return nullptr;
  }
  std::unique_ptr<SharedLockFile> opened(new SharedLockFile(std::move(file)));
  const int descriptor = opened->file_.Get();
  // Whoever can hold the first byte alone is the one that creates; the others wait until that is
  // done.
  existed = !LockByte(descriptor, F_OFD_SETLK, F_WRLCK, kExistence);
  bool done = existed || WriteState(descriptor, kFree);
  if (done && !existed && takeIt) done = opened->TryTake() == Taken::kYes;
  if (done) done = LockByte(descriptor, F_OFD_SETLKW, F_RDLCK, kExistence);
  if (done) return opened;
  error = ErrorFromErrno(errno);
  return nullptr;
}

SharedLockFile::Taken SharedLockFile::TryTake() {
  if (!LockByte(file_.Get(), F_OFD_SETLK, F_WRLCK, kOwnership)) {
    return errno == EAGAIN || errno == EACCES ? Taken::kNo : Taken::kFailed;
  }
  char state = kFree;
  const bool known =
      ::pread(file_.Get(), &state, 1, kOwnership) == 1 && WriteState(file_.Get(), kOwned);
  if (!known) {
    const int error = errno;
    LockByte(file_.Get(), F_OFD_SETLK, F_UNLCK, kOwnership);
    errno = error;
    return Taken::kFailed;
  }
  return state == kOwned ? Taken::kAbandoned : Taken::kYes;
}

void SharedLockFile::GiveBack() {
  WriteState(file_.Get(), kFree);
  Abandon();
}

void SharedLockFile::Abandon() {
  LockByte(file_.Get(), F_OFD_SETLK, F_UNLCK, kOwnership);
}

}  // namespace platform
