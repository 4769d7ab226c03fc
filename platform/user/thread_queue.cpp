#include "platform/user/thread_queue.h"

#include <algorithm>

#include "platform/kernel/clock.h"
#include "platform/user/desktop.h"
#include "platform/user/input.h"

namespace platform {
namespace {

constexpr std::size_t kMostMessages = 10'000;

DWORD Tick() {
  return static_cast<DWORD>(CurrentClock().TickMilliseconds());
}

// Whether both are moves of the mouse in the same window.
bool MovesOn(const MSG& last, const MSG& next) {
  return last.message == WM_MOUSEMOVE && next.message == WM_MOUSEMOVE && last.hwnd == next.hwnd;
}

}  // namespace

void ThreadQueue::SignalLocked() {
  signalled_ = true;
  arrived_.notify_all();
  if (loop_ != nullptr) loop_->Wake();
}

PostResult ThreadQueue::Post(MSG message) {
  message.time = Tick();
  message.pt = {};
  const std::lock_guard lock(mutex_);
  if (ended_) return PostResult::kEnded;
  if (posted_.size() >= kMostMessages) return PostResult::kFull;
  posted_.push_back(message);
  SignalLocked();
  return PostResult::kPosted;
}

void ThreadQueue::PostQuit(int exitCode) {
  const std::lock_guard lock(mutex_);
  quitCode_ = exitCode;
  SignalLocked();
}

void ThreadQueue::PostInput(InputMessage input) {
  input.message.time = Tick();
  const std::lock_guard lock(mutex_);
  if (ended_) return;
  if (!input_.empty() && MovesOn(input_.back().message, input.message)) input_.pop_back();
  if (input_.size() >= kMostMessages) return;
  input_.push_back(std::move(input));
  SignalLocked();
}

void ThreadQueue::DiscardMessagesOf(HWND window) {
  const std::lock_guard lock(mutex_);
  std::erase_if(input_, [&](const InputMessage& each) { return each.message.hwnd == window; });
  std::erase_if(posted_, [&](const MSG& each) { return each.hwnd == window; });
}

void ThreadQueue::Defer(std::function<void()> work) {
  const std::lock_guard lock(mutex_);
  if (ended_) return;
  deferred_.push_back(std::move(work));
  SignalLocked();
}

bool ThreadQueue::RunDeferred() {
  std::function<void()> work;
  {
    const std::lock_guard lock(mutex_);
    if (deferred_.empty()) return false;
    work = std::move(deferred_.front());
    deferred_.pop_front();
  }
  work();
  return true;
}

bool ThreadQueue::Call(std::function<void()> work) {
  auto call = std::make_shared<PendingCall>();
  call->work = std::move(work);
  call->caller = CurrentQueue();
  if (!Enqueue(call)) return false;
  call->caller->AwaitReply(call);
  return !call->abandoned;
}

bool ThreadQueue::Enqueue(const PendingCallPointer& call) {
  const std::lock_guard lock(mutex_);
  if (ended_) return false;
  calls_.push_back(call);
  SignalLocked();
  return true;
}

void ThreadQueue::AwaitReply(const PendingCallPointer& call) {
  for (;;) {
    ServeCalls();
    if (IsFinished(*call)) return;
    WaitInQueue(std::nullopt);
  }
}

void ThreadQueue::Finish(PendingCall& call, bool abandoned) {
  const std::lock_guard lock(mutex_);
  call.finished = true;
  call.abandoned = abandoned;
  SignalLocked();
}

bool ThreadQueue::IsFinished(const PendingCall& call) {
  const std::lock_guard lock(mutex_);
  return call.finished;
}

void ThreadQueue::ServeCalls() {
  for (;;) {
    PendingCallPointer call;
    {
      const std::lock_guard lock(mutex_);
      if (calls_.empty()) return;
      call = std::move(calls_.front());
      calls_.pop_front();
    }
    call->work();
    call->caller->Finish(*call, false);
  }
}

std::optional<MSG> ThreadQueue::Take(const MessageFilter& filter, bool remove) {
  if (auto message = TakePosted(filter, remove)) return message;
  if (auto message = TakeQuit(remove)) return message;
  while (const auto input = TakeInput(filter, remove)) {
    if (!remove || AcceptInput(*input)) return input->message;
  }
  return timers_.Take(filter, remove);
}

std::optional<MSG> ThreadQueue::TakePosted(const MessageFilter& filter, bool remove) {
  const std::lock_guard lock(mutex_);
  const auto found = std::ranges::find_if(
      posted_, [&](const MSG& each) { return filter.Passes(each.hwnd, each.message); });
  if (found == posted_.end()) return std::nullopt;
  const MSG message = *found;
  if (remove) posted_.erase(found);
  return message;
}

std::optional<MSG> ThreadQueue::TakeQuit(bool remove) {
  const std::lock_guard lock(mutex_);
  if (!quitCode_.has_value()) return std::nullopt;
  MSG message{};
  message.message = WM_QUIT;
  message.wParam = static_cast<WPARAM>(*quitCode_);
  message.time = Tick();
  if (remove) quitCode_.reset();
  return message;
}

std::optional<InputMessage> ThreadQueue::TakeInput(const MessageFilter& filter, bool remove) {
  const std::lock_guard lock(mutex_);
  const auto found = std::ranges::find_if(input_, [&](const InputMessage& each) {
    return filter.Passes(each.message.hwnd, each.message.message);
  });
  if (found == input_.end()) return std::nullopt;
  InputMessage input = *found;
  if (remove) input_.erase(found);
  return input;
}

void ThreadQueue::Wait(const MessageFilter& filter) {
  const auto limit = timers_.UntilNext(filter);
  if (loop_ == nullptr) {
    WaitInQueue(limit);
  } else if (limit.has_value()) {
    WaitInLoop(CurrentClock().LongestBlock(*limit));
  } else {
    WaitInLoop(std::nullopt);
  }
}

void ThreadQueue::PollEventLoop() {
  if (loop_ != nullptr) WaitInLoop(std::chrono::milliseconds(0));
}

void ThreadQueue::WaitInLoop(std::optional<std::chrono::milliseconds> limit) {
  loop_->Wait(limit);
  if (loop_->IsBroken()) LoseDesktop(*this);
}

void ThreadQueue::WaitInQueue(std::optional<std::chrono::milliseconds> limit) {
  std::unique_lock lock(mutex_);
  if (!limit.has_value()) {
    arrived_.wait(lock, [this] { return signalled_; });
  } else if (!signalled_) {
    CurrentClock().WaitFor(arrived_, lock, *limit);
  }
  signalled_ = false;
}

void ThreadQueue::SetEventLoop(EventLoop* loop) {
  const std::lock_guard lock(mutex_);
  loop_ = loop;
}

void ThreadQueue::End() {
  std::deque<PendingCallPointer> calls;
  // Destroyed outside the lock: what deferred work holds may use the queue in its destructor.
  std::deque<std::function<void()>> dropped;
  {
    const std::lock_guard lock(mutex_);
    ended_ = true;
    loop_ = nullptr;
    posted_.clear();
    input_.clear();
    dropped.swap(deferred_);
    calls.swap(calls_);
  }
  dropped.clear();
  for (const PendingCallPointer& call : calls)
    call->caller->Finish(*call, true);
}

}  // namespace platform
