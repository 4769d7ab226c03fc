// The message queue of one thread: posted messages, the quit flag, mouse and keyboard input, calls
// from other threads, deferred work and timers. Created when its thread first needs it; closed when
// the thread ends. Any thread, but for the functions that are marked.
#pragma once

#include <windows.h>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

#include "platform/user/event_loop.h"
#include "platform/user/input_message.h"
#include "platform/user/message_filter.h"
#include "platform/user/timer_list.h"

namespace platform {

enum class PostResult { kPosted, kFull, kEnded };

class ThreadQueue {
 public:
  explicit ThreadQueue(DWORD threadId) : threadId_(threadId) {}
  ThreadQueue(const ThreadQueue&) = delete;
  ThreadQueue& operator=(const ThreadQueue&) = delete;

  DWORD ThreadId() const { return threadId_; }

  // At most 10000 messages wait in a queue, as documented. Sets the time and the position of the
  // message.
  PostResult Post(MSG message);
  void PostQuit(int exitCode);
  // Queues mouse or keyboard input; sets its time. A mouse move replaces a move in the same window
  // that is last in the queue.
  void PostInput(InputMessage input);
  void DiscardMessagesOf(HWND window);

  // Runs the work on the owning thread when it next retrieves messages (GetMessageW, PeekMessageW,
  // modal loops). As with calls from other threads, the work runs before posted messages and
  // whatever the filter is. Window procedures see what the user did this way. Does not wait; the
  // work is dropped when the thread ends.
  void Defer(std::function<void()> work);

  // Runs the work on the owning thread, inside its GetMessageW, PeekMessageW or its own Call to
  // another thread, and returns when the work is done. The calling thread serves calls to its own
  // queue meanwhile. False when the thread ended first: the work has not run then.
  bool Call(std::function<void()> work);

  // The functions from here on are for the owning thread only.
  TimerList& Timers() { return timers_; }
  void ServeCalls();
  // Runs the first deferred work; false when there is none.
  bool RunDeferred();
  // The next message in the documented order: posted, quit, input, timer. Does not wait. Input that
  // is removed takes effect (input.h), for which window procedures may be called.
  std::optional<MSG> Take(const MessageFilter& filter, bool remove);
  // Returns when something may have arrived or a timer that passes the filter is due. May return
  // earlier.
  void Wait(const MessageFilter& filter);
  // Dispatches the desktop's pending events, if there is an event loop. Does not wait.
  void PollEventLoop();
  // Sets the event loop that Wait waits in; null: the queue waits by itself.
  void SetEventLoop(EventLoop* loop);
  // Closes the queue: later posts and calls fail, and so do the calls that wait.
  void End();

 private:
  struct PendingCall {
    std::function<void()> work;
    std::shared_ptr<ThreadQueue> caller;
    // Guarded by the caller's mutex.
    bool finished = false;
    bool abandoned = false;
  };
  using PendingCallPointer = std::shared_ptr<PendingCall>;

  bool Enqueue(const PendingCallPointer& call);
  void AwaitReply(const PendingCallPointer& call);
  void Finish(PendingCall& call, bool abandoned);
  bool IsFinished(const PendingCall& call);
  std::optional<MSG> TakePosted(const MessageFilter& filter, bool remove);
  std::optional<MSG> TakeQuit(bool remove);
  std::optional<InputMessage> TakeInput(const MessageFilter& filter, bool remove);
  void WaitInLoop(std::optional<std::chrono::milliseconds> limit);
  void WaitInQueue(std::optional<std::chrono::milliseconds> limit);
  void SignalLocked();

  const DWORD threadId_;
  TimerList timers_;

  std::mutex mutex_;
  std::condition_variable arrived_;
  // Set when something has arrived that the owning thread has not handled yet.
  bool signalled_ = false;
  bool ended_ = false;
  std::deque<MSG> posted_;
  std::deque<InputMessage> input_;
  std::deque<PendingCallPointer> calls_;
  std::deque<std::function<void()>> deferred_;
  std::optional<int> quitCode_;
  EventLoop* loop_ = nullptr;
};

// The calling thread's queue, created on first use. When the thread ends, its windows are removed
// and the queue is closed.
const std::shared_ptr<ThreadQueue>& CurrentQueue();

// The queue of a thread of this process that has retrieved or posted a message or created a window;
// null for any other number.
std::shared_ptr<ThreadQueue> QueueOfThread(DWORD threadId);

}  // namespace platform
