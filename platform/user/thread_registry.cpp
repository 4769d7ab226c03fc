// Which thread has which queue.
#include <signal.h>
#include <unistd.h>

#include <map>

#include "platform/user/desktop.h"
#include "platform/user/thread_queue.h"
#include "platform/user/window.h"

namespace platform {
namespace {

struct ThreadRegistry {
  std::mutex mutex;
  std::map<DWORD, std::shared_ptr<ThreadQueue>> queues;
};

ThreadRegistry& Registry() {
  static ThreadRegistry& registry = *new ThreadRegistry;
  return registry;
}

bool IsLiveThread(DWORD threadId) {
  return threadId != 0 && ::tgkill(::getpid(), static_cast<pid_t>(threadId), 0) == 0;
}

std::shared_ptr<ThreadQueue> FindOrMakeLocked(ThreadRegistry& registry, DWORD threadId) {
  auto& queue = registry.queues[threadId];
  if (queue == nullptr) queue = std::make_shared<ThreadQueue>(threadId);
  return queue;
}

// Ties the queue to its thread: the destructor runs when the thread ends.
class Attachment {
 public:
  Attachment() {
    ThreadRegistry& registry = Registry();
    const std::lock_guard lock(registry.mutex);
    queue_ = FindOrMakeLocked(registry, ::GetCurrentThreadId());
  }
  ~Attachment() {
    ForgetWindowsOf(*queue_);
    queue_->End();
    LeaveDesktop(*queue_);
    ThreadRegistry& registry = Registry();
    const std::lock_guard lock(registry.mutex);
    registry.queues.erase(queue_->ThreadId());
  }
  Attachment(const Attachment&) = delete;
  Attachment& operator=(const Attachment&) = delete;

  const std::shared_ptr<ThreadQueue>& Queue() const { return queue_; }

 private:
  std::shared_ptr<ThreadQueue> queue_;
};

}  // namespace

const std::shared_ptr<ThreadQueue>& CurrentQueue() {
  thread_local Attachment attachment;
  return attachment.Queue();
}

std::shared_ptr<ThreadQueue> QueueOfThread(DWORD threadId) {
  if (!IsLiveThread(threadId)) return nullptr;
  ThreadRegistry& registry = Registry();
  const std::lock_guard lock(registry.mutex);
  // Threads that were posted to and ended without ever looking leave their queues behind.
  std::erase_if(registry.queues, [](const auto& each) { return !IsLiveThread(each.first); });
  return FindOrMakeLocked(registry, threadId);
}

}  // namespace platform
