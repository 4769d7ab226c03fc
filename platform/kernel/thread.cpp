#include <windows.h>
#include <process.h>

#include <pthread.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <memory>

#include "platform/kernel/api_result.h"
#include "platform/kernel/clock.h"
#include "platform/kernel/log.h"
#include "platform/kernel/waitable.h"

namespace platform {
namespace {

// The object of a thread handle; signalled when the thread has exited.
class Thread final : public Waitable {
 public:
  Thread(_beginthreadex_proc_type entry, void* argument, bool suspended)
      : entry_(entry), argument_(argument), suspended_(suspended) {}

  DWORD Wait(const Deadline& deadline) override;

  // The previous suspend count: 1, or 0 when the thread was not suspended.
  DWORD Resume();

  // For the creating thread: waits for the new thread's identifier and returns it.
  DWORD AwaitId();

  // For the thread itself.
  void Begin();
  void RunEntry() { entry_(argument_); }
  void End();

 private:
  const _beginthreadex_proc_type entry_;
  void* const argument_;
  std::mutex mutex_;
  std::condition_variable changed_;
  DWORD id_ = 0;
  bool suspended_;
  bool ended_ = false;
};

DWORD Thread::Wait(const Deadline& deadline) {
  std::unique_lock lock(mutex_);
  while (!ended_) {
    if (deadline.HasCome()) return WAIT_TIMEOUT;
    CurrentClock().WaitFor(changed_, lock, deadline.Left());
  }
  return WAIT_OBJECT_0;
}

DWORD Thread::Resume() {
  const std::lock_guard lock(mutex_);
  const DWORD previousCount = suspended_ ? 1 : 0;
  suspended_ = false;
  changed_.notify_all();
  return previousCount;
}

DWORD Thread::AwaitId() {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] { return id_ != 0; });
  return id_;
}

void Thread::Begin() {
  std::unique_lock lock(mutex_);
  id_ = ::GetCurrentThreadId();
  changed_.notify_all();
  changed_.wait(lock, [this] { return !suspended_; });
}

void Thread::End() {
  const std::lock_guard lock(mutex_);
  ended_ = true;
  changed_.notify_all();
}

// Signals the handle when the thread exits. It is the first thread-local object of its thread, so
// it is destroyed last, after those that the thread's code has created.
struct ThreadEnd {
  std::shared_ptr<Thread> thread;
  ThreadEnd() = default;
  ThreadEnd(const ThreadEnd&) = delete;
  ThreadEnd& operator=(const ThreadEnd&) = delete;
  ~ThreadEnd() {
    if (thread != nullptr) thread->End();
  }
};

void* RunThread(void* parameter) noexcept {
  static thread_local ThreadEnd end;
  const std::unique_ptr<std::shared_ptr<Thread>> given(
      static_cast<std::shared_ptr<Thread>*>(parameter));
  end.thread = *given;
  (*given)->Begin();
  (*given)->RunEntry();
  return nullptr;
}

int StartThread(std::shared_ptr<Thread> thread, unsigned stackBytes) {
  auto given = std::make_unique<std::shared_ptr<Thread>>(std::move(thread));
  pthread_attr_t attributes;
  ::pthread_attr_init(&attributes);
  ::pthread_attr_setdetachstate(&attributes, PTHREAD_CREATE_DETACHED);
  const std::size_t smallest = PTHREAD_STACK_MIN;
  int error = 0;
  if (stackBytes != 0) {
    error = ::pthread_attr_setstacksize(&attributes, std::max<std::size_t>(stackBytes, smallest));
  }
  pthread_t id{};
  if (error == 0) error = ::pthread_create(&id, &attributes, RunThread, given.get());
  ::pthread_attr_destroy(&attributes);
  if (error == 0) static_cast<void>(given.release());
  return error;
}

// Cached: sending a message compares it with the thread of the window.
thread_local DWORD currentThreadId = 0;

// Caches the identifier. After fork it is reset: the child's thread has another one.
void CacheCurrentThreadId() {
  static const int resetInChildren =
      ::pthread_atfork(nullptr, nullptr, [] { currentThreadId = 0; });
  static_cast<void>(resetInChildren);
  currentThreadId = static_cast<DWORD>(::gettid());
}

}  // namespace
}  // namespace platform

extern "C" {

std::uintptr_t _beginthreadex(void*, unsigned stackBytes, _beginthreadex_proc_type startAddress,
                              void* argument, unsigned initFlag, unsigned* threadId) try {
  if (startAddress == nullptr || (initFlag & ~CREATE_SUSPENDED) != 0) {
    if (startAddress != nullptr) platform::LogLine("_beginthreadex: unsupported flag");
    errno = EINVAL;
    return 0;
  }
  const bool suspended = (initFlag & CREATE_SUSPENDED) != 0;
  auto thread = std::make_shared<platform::Thread>(startAddress, argument, suspended);
  const int error = platform::StartThread(thread, stackBytes);
  if (error != 0) {
    errno = error;
    return 0;
  }
  const DWORD id = thread->AwaitId();
  if (threadId != nullptr) *threadId = id;
  return reinterpret_cast<std::uintptr_t>(
      platform::Handles().Insert(platform::HandleKind::kThread, std::move(thread)));
} catch (...) {
  platform::ErrorOfException();
  errno = ENOMEM;
  return 0;
}

DWORD WINAPI GetCurrentThreadId() {
  if (platform::currentThreadId == 0) platform::CacheCurrentThreadId();
  return platform::currentThreadId;
}

DWORD WINAPI GetCurrentProcessId() {
  return static_cast<DWORD>(::getpid());
}

DWORD WINAPI ResumeThread(HANDLE thread) try {
  const auto found = platform::Resolve<platform::Thread>(platform::HandleKind::kThread, thread);
  if (found == nullptr) {
    ::SetLastError(ERROR_INVALID_HANDLE);
    return static_cast<DWORD>(-1);
  }
  return found->Resume();
} catch (...) {
  return platform::FailedCall(static_cast<DWORD>(-1));
}

}  // extern "C"
