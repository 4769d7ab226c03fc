#include <windows.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <string>
#include <vector>

#include "platform/kernel/api_result.h"
#include "platform/kernel/clock.h"
#include "platform/kernel/encoding.h"
#include "platform/kernel/file_descriptor.h"
#include "platform/kernel/log.h"
#include "platform/kernel/path.h"
#include "platform/kernel/system_error.h"
#include "platform/kernel/waitable.h"

namespace platform {
namespace {

class Mutex;

// The mutexes that the calling thread owns. Those that it still owns when it exits are abandoned.
class OwnedMutexes {
 public:
  OwnedMutexes() = default;
  OwnedMutexes(const OwnedMutexes&) = delete;
  OwnedMutexes& operator=(const OwnedMutexes&) = delete;
  ~OwnedMutexes();

  void Add(std::weak_ptr<Mutex> mutex) { mutexes_.push_back(std::move(mutex)); }
  void Remove(const std::shared_ptr<Mutex>& mutex);

 private:
  // Weak: closing the last handle destroys a mutex even when a thread owns it.
  std::vector<std::weak_ptr<Mutex>> mutexes_;
};

thread_local OwnedMutexes ownedMutexes;

class Mutex final : public Waitable, public std::enable_shared_from_this<Mutex> {
 public:
  // `name` is the locked file of a named mutex, which exists for other processes while it is open.
  explicit Mutex(FileDescriptor name = {}) : name_(std::move(name)) {}

  DWORD Wait(const Deadline& deadline) override;
  bool Release();     // false when the caller does not own it
  void AcquireNew();  // for CreateMutexW: the calling thread owns the new mutex
  void Abandon();

 private:
  void FreeLocked();

  const FileDescriptor name_;
  std::mutex mutex_;
  std::condition_variable freed_;
  DWORD owner_ = 0;
  DWORD depth_ = 0;
  bool abandoned_ = false;
};

OwnedMutexes::~OwnedMutexes() {
  for (const std::weak_ptr<Mutex>& each : mutexes_) {
    if (const std::shared_ptr<Mutex> mutex = each.lock()) mutex->Abandon();
  }
}

void OwnedMutexes::Remove(const std::shared_ptr<Mutex>& mutex) {
  std::erase_if(mutexes_, [&mutex](const std::weak_ptr<Mutex>& each) {
    const std::shared_ptr<Mutex> owned = each.lock();
    return owned == nullptr || owned == mutex;
  });
}

DWORD Mutex::Wait(const Deadline& deadline) {
  if (name_.IsOpen()) {
    LogLine("a mutex with a name says whether it exists; it cannot be waited for");
    ::SetLastError(ERROR_NOT_SUPPORTED);
    return WAIT_FAILED;
  }
  const DWORD self = ::GetCurrentThreadId();
  std::unique_lock lock(mutex_);
  if (owner_ == self) {
    ++depth_;
    return WAIT_OBJECT_0;
  }
  while (owner_ != 0) {
    if (deadline.HasCome()) return WAIT_TIMEOUT;
    CurrentClock().WaitFor(freed_, lock, deadline.Left());
  }
  owner_ = self;
  depth_ = 1;
  ownedMutexes.Add(weak_from_this());
  return std::exchange(abandoned_, false) ? WAIT_ABANDONED : WAIT_OBJECT_0;
}

bool Mutex::Release() {
  const std::lock_guard lock(mutex_);
  if (owner_ != ::GetCurrentThreadId() || depth_ == 0) return false;
  if (--depth_ > 0) return true;
  ownedMutexes.Remove(shared_from_this());
  FreeLocked();
  return true;
}

void Mutex::AcquireNew() {
  const std::lock_guard lock(mutex_);
  owner_ = ::GetCurrentThreadId();
  depth_ = 1;
  ownedMutexes.Add(weak_from_this());
}

void Mutex::Abandon() {
  const std::lock_guard lock(mutex_);
  depth_ = 0;
  abandoned_ = true;
  FreeLocked();
}

void Mutex::FreeLocked() {
  owner_ = 0;
  freed_.notify_one();
}

// The file name for a mutex's name: letters and digits as they are, every other byte as "%" and two
// hexadecimal digits. Case-sensitive.
std::string ObjectFileName(std::wstring_view name) {
  std::string fileName;
  for (const char each : Utf8(name)) {
    const auto byte = static_cast<unsigned char>(each);
    if (std::isalnum(byte) != 0) {
      fileName += each;
      continue;
    }
    constexpr char kDigits[] = "0123456789abcdef";
    fileName += {'%', kDigits[byte >> 4], kDigits[byte & 0xF]};
  }
  return fileName;
}

// After "Global\" or "Local\" the name may not contain a backslash.
DWORD CheckName(std::wstring_view name) {
  for (const std::wstring_view space : {L"Global\\", L"Local\\"}) {
    if (name.starts_with(space)) name.remove_prefix(space.size());
  }
  if (name.find(L'\\') != std::wstring_view::npos) return ERROR_PATH_NOT_FOUND;
  constexpr std::size_t kMaximumFileName = 255;
  return ObjectFileName(name).size() + 16 > kMaximumFileName ? ERROR_INVALID_NAME : NO_ERROR;
}

// Locks the open file description (F_OFD_...), not the process: two handles in one process conflict
// like those of two processes. The kernel releases the lock when the file is closed, also when the
// process is killed.
bool Lock(const FileDescriptor& file, int command, short type) {
  struct flock lock {};
  lock.l_type = type;
  lock.l_whence = SEEK_SET;
  lock.l_len = 1;
  int result = 0;
  do {
    result = ::fcntl(file.Get(), command, &lock);
  } while (result != 0 && errno == EINTR);
  return result == 0;
}

// Opens the file of that name with a shared lock, which lasts while the file is open. `existed` is
// set when another handle holds the lock.
DWORD OpenNamed(std::wstring_view name, FileDescriptor& file, bool& existed) {
  const DWORD error = CheckName(name);
  if (error != NO_ERROR) return error;
  const std::filesystem::path folder = RootFolder() / "objects";
  ::mkdir(folder.c_str(), 0700);
  const std::filesystem::path path = folder / ObjectFileName(name);
  file.Reset(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
  if (!file.IsOpen()) return ErrorFromErrno(errno);
  existed = !Lock(file, F_OFD_SETLK, F_WRLCK);
  return Lock(file, F_OFD_SETLKW, F_RDLCK) ? NO_ERROR : ErrorFromErrno(errno);
}

bool IsPlain(const SECURITY_ATTRIBUTES* security) {
  return security == nullptr ||
         (security->lpSecurityDescriptor == nullptr && security->bInheritHandle == FALSE);
}

}  // namespace
}  // namespace platform

extern "C" {

HANDLE WINAPI CreateMutexW(LPSECURITY_ATTRIBUTES security, BOOL initialOwner, LPCWSTR name) try {
  DWORD error = NO_ERROR;
  bool existed = false;
  platform::FileDescriptor file;
  if (!platform::IsPlain(security)) {
    platform::LogLine("CreateMutexW: security attributes are not supported");
    error = ERROR_INVALID_PARAMETER;
  } else if (name != nullptr && *name != L'\0') {
    error = platform::OpenNamed(name, file, existed);
  }
  ::SetLastError(error != NO_ERROR ? error : existed ? ERROR_ALREADY_EXISTS : NO_ERROR);
  if (error != NO_ERROR) return nullptr;
  auto mutex = std::make_shared<platform::Mutex>(std::move(file));
  if (initialOwner != FALSE && !existed) mutex->AcquireNew();
  return platform::Handles().Insert(platform::HandleKind::kMutex, std::move(mutex));
} catch (...) {
  return platform::FailedCall<HANDLE>(nullptr);
}

BOOL WINAPI ReleaseMutex(HANDLE mutex) try {
  const auto found = platform::Resolve<platform::Mutex>(platform::HandleKind::kMutex, mutex);
  if (found != nullptr && found->Release()) return TRUE;
  ::SetLastError(found == nullptr ? ERROR_INVALID_HANDLE : ERROR_NOT_OWNER);
  return FALSE;
} catch (...) {
  return platform::FailedCall(FALSE);
}

}  // extern "C"
