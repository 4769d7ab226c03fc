// The message queue of one thread: posted messages, the quit flag, mouse and keyboard, calls from
// other threads and timers. Created when its thread first needs it; it ends with its thread.
// Functions for the owning thread are marked; all others are for any thread.
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

  // At most 10000 messages wait in a queue, as documented. Time and place are filled in.
  PostResult Post(MSG message);
  void PostQuit(int exitCode);
  // What the mouse or the keyboard did; the time is filled in. A mouse that only moves on in a
  // window takes the place of its last move there.
  void PostInput(InputMessage input);
  void DiscardMessagesOf(HWND window);

  // Runs the work on the owning thread when it next looks for messages (GetMessageW, PeekMessageW,
  // modal loops), before what was posted and whatever window or range these are asked for: it is
  // sent, not taken, as calls from other threads are. Does not wait for it. What the user did
  // reaches window procedures this way. Dropped when the thread ends.
  void Defer(std::function<void()> work);

  // Runs the work on the owning thread, inside its GetMessageW, PeekMessageW or a call of its own
  // to another thread, and returns when it is done. The caller serves calls to itself meanwhile.
  // False when the thread ended first: the work then has not run.
  bool Call(std::function<void()> work);

  // --- owning thread ---
  TimerList& Timers() { return timers_; }
  void ServeCalls();
  // Runs the work that was deferred first; false when there is none.
  bool RunDeferred();
  // The next message in documented order: posted, quit, input, timer. Does not wait. Input that is
  // removed counts from then on (input.h), for which window procedures may be called.
  std::optional<MSG> Take(const MessageFilter& filter, bool remove);
  // Returns when something may have arrived or a timer that passes is due; also without either.
  void Wait(const MessageFilter& filter);
  // Lets the desktop's events happen, if the queue waits in its loop. Does not wait.
  void PollEventLoop();
  // What Wait waits in from now on; null: in the queue itself.
  void SetEventLoop(EventLoop* loop);
  // Fails what is posted or called from now on, and the calls that wait.
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
  // Something arrived that the owning thread has not looked at yet.
  bool signalled_ = false;
  bool ended_ = false;
  std::deque<MSG> posted_;
  std::deque<InputMessage> input_;
  std::deque<PendingCallPointer> calls_;
  std::deque<std::function<void()>> deferred_;
  std::optional<int> quitCode_;
  EventLoop* loop_ = nullptr;
};

// The calling thread's queue. It ends, and the thread's windows with it, when the thread does.
const std::shared_ptr<ThreadQueue>& CurrentQueue();

// The queue of a thread of this process that has looked for messages, posted one or made a window;
// null for any other number.
std::shared_ptr<ThreadQueue> QueueOfThread(DWORD threadId);

}  // namespace platform
