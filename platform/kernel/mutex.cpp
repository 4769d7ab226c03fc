#include <windows.h>

#include <sys/stat.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <map>
#include <string>
#include <vector>

#include "platform/kernel/api_result.h"
#include "platform/kernel/clock.h"
#include "platform/kernel/encoding.h"
#include "platform/kernel/log.h"
#include "platform/kernel/path.h"
#include "platform/kernel/shared_lock_file.h"
#include "platform/kernel/system_error.h"
#include "platform/kernel/waitable.h"

namespace platform {
namespace {

class Mutex;

// The mutexes that the calling thread owns; those it still owns when it ends are abandoned.
class OwnedMutexes {
 public:
  OwnedMutexes() = default;
  OwnedMutexes(const OwnedMutexes&) = delete;
  OwnedMutexes& operator=(const OwnedMutexes&) = delete;
  ~OwnedMutexes();

  void Add(std::weak_ptr<Mutex> mutex) { mutexes_.push_back(std::move(mutex)); }
  void Remove(const std::shared_ptr<Mutex>& mutex);

 private:
  // Weak: a mutex whose last handle is closed is gone, owned or not.
  std::vector<std::weak_ptr<Mutex>> mutexes_;
};

thread_local OwnedMutexes ownedMutexes;

// One mutex of this process; a named one stands for all handles of that name in the process, and
// its file for the other processes. Threads here first agree among themselves who may be the owner,
// and that one then contends for the file.
class Mutex final : public Waitable, public std::enable_shared_from_this<Mutex> {
 public:
  explicit Mutex(std::unique_ptr<SharedLockFile> file) : file_(std::move(file)) {}

  DWORD Wait(const Deadline& deadline) override;
  bool Release();  // false when the caller does not own it
  void TakeNew();  // the creator's, whose file is taken already
  void Abandon();

 private:
  DWORD AwaitFile(const Deadline& deadline, std::unique_lock<std::mutex>& lock);
  void FreeLocked();

  std::mutex mutex_;
  std::condition_variable freed_;
  const std::unique_ptr<SharedLockFile> file_;  // null when the mutex has no name
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
  owner_ = self;  // keeps the other threads of this process out while the file is waited for
  const DWORD fileResult = AwaitFile(deadline, lock);
  if (fileResult == WAIT_TIMEOUT || fileResult == WAIT_FAILED) {
    FreeLocked();
    return fileResult;
  }
  depth_ = 1;
  ownedMutexes.Add(weak_from_this());
  const bool abandoned = std::exchange(abandoned_, false);
  return abandoned ? WAIT_ABANDONED : fileResult;
}

// The kernel has no timed wait for a file lock, so another process's ownership is polled for.
DWORD Mutex::AwaitFile(const Deadline& deadline, std::unique_lock<std::mutex>& lock) {
  constexpr std::chrono::milliseconds kPollInterval{10};
  if (file_ == nullptr) return WAIT_OBJECT_0;
  for (;;) {
    switch (file_->TryTake()) {
      case SharedLockFile::Taken::kYes:
        return WAIT_OBJECT_0;
      case SharedLockFile::Taken::kAbandoned:
        return WAIT_ABANDONED;
      case SharedLockFile::Taken::kFailed:
        ::SetLastError(ErrorFromErrno(errno));
        return WAIT_FAILED;
      case SharedLockFile::Taken::kNo:
        if (deadline.HasCome()) return WAIT_TIMEOUT;
        freed_.wait_for(lock, kPollInterval);
    }
  }
}

bool Mutex::Release() {
  const std::lock_guard lock(mutex_);
  if (owner_ != ::GetCurrentThreadId() || depth_ == 0) return false;
  if (--depth_ > 0) return true;
  ownedMutexes.Remove(shared_from_this());
  if (file_ != nullptr) file_->GiveBack();
  FreeLocked();
  return true;
}

void Mutex::TakeNew() {
  const std::lock_guard lock(mutex_);
  owner_ = ::GetCurrentThreadId();
  depth_ = 1;
  ownedMutexes.Add(weak_from_this());
}

void Mutex::Abandon() {
  const std::lock_guard lock(mutex_);
  depth_ = 0;
  abandoned_ = file_ == nullptr;  // else the file tells it, to every process
  if (file_ != nullptr) file_->Abandon();
  FreeLocked();
}

void Mutex::FreeLocked() {
  owner_ = 0;
  freed_.notify_one();
}

std::shared_ptr<Mutex> MakeMutex(std::unique_ptr<SharedLockFile> file, bool takeIt) {
  auto mutex = std::make_shared<Mutex>(std::move(file));
  if (takeIt) mutex->TakeNew();
  return mutex;
}

// The named mutexes of this process, by the path of their file.
struct NamedMutexes {
  std::mutex mutex;
  std::map<std::string, std::weak_ptr<Mutex>> byPath;
};

NamedMutexes& Named() {
  static NamedMutexes& named = *new NamedMutexes;
  return named;
}

// A file name made of a mutex's name: letters and digits as they are, everything else in
// hexadecimal. Names differ in case.
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

// The name without its namespace may not hold a backslash.
DWORD CheckName(std::wstring_view name) {
  for (const std::wstring_view space : {L"Global\\", L"Local\\"}) {
    if (name.starts_with(space)) name.remove_prefix(space.size());
  }
  if (name.find(L'\\') != std::wstring_view::npos) return ERROR_PATH_NOT_FOUND;
  constexpr std::size_t kMaximumFileName = 255;
  return ObjectFileName(name).size() + 16 > kMaximumFileName ? ERROR_INVALID_NAME : NO_ERROR;
}

std::shared_ptr<Mutex> OpenNamed(std::wstring_view name, bool takeIt, bool& existed, DWORD& error) {
  error = CheckName(name);
  if (error != NO_ERROR) return nullptr;
  const std::filesystem::path folder = RootFolder() / "objects";
  ::mkdir(folder.c_str(), 0700);
  const std::filesystem::path path = folder / ObjectFileName(name);
  NamedMutexes& named = Named();
  const std::lock_guard lock(named.mutex);
  std::weak_ptr<Mutex>& known = named.byPath[path.native()];
  existed = true;
  if (std::shared_ptr<Mutex> mutex = known.lock()) return mutex;
  auto file = SharedLockFile::Open(path, takeIt, existed, error);
  if (file == nullptr) return nullptr;
  std::shared_ptr<Mutex> mutex = MakeMutex(std::move(file), takeIt && !existed);
  known = mutex;
  return mutex;
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
  std::shared_ptr<platform::Mutex> mutex;
  if (!platform::IsPlain(security)) {
    platform::LogLine("CreateMutexW: security attributes are not supported");
    error = ERROR_INVALID_PARAMETER;
  } else if (name == nullptr || *name == L'\0') {
    mutex = platform::MakeMutex(nullptr, initialOwner != FALSE);
  } else {
    mutex = platform::OpenNamed(name, initialOwner != FALSE, existed, error);
  }
  ::SetLastError(error != NO_ERROR ? error : existed ? ERROR_ALREADY_EXISTS : NO_ERROR);
  if (mutex == nullptr) return nullptr;
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
