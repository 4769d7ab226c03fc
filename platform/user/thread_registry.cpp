// The message queues of the process by thread.
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

// Binds the queue to its thread: the destructor runs when the thread ends.
class Attachment {
 public:
  Attachment() {
    queue_ = std::make_shared<ThreadQueue>(::GetCurrentThreadId());
    ThreadRegistry& registry = Registry();
    const std::lock_guard lock(registry.mutex);
    registry.queues[queue_->ThreadId()] = queue_;
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
  ThreadRegistry& registry = Registry();
  const std::lock_guard lock(registry.mutex);
  const auto found = registry.queues.find(threadId);
  return found != registry.queues.end() ? found->second : nullptr;
}

}  // namespace platform
