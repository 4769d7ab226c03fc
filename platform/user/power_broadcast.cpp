#include "platform/user/power_broadcast.h"

#include <chrono>

#include "platform/kernel/log.h"
#include "platform/user/window_list.h"

namespace platform {
namespace {

constexpr std::chrono::seconds kLongestAnswer{5};

// One event on its way to one window. A thread that ends drops it.
class Delivery {
 public:
  Delivery(std::shared_ptr<PowerAnswers> answers, std::shared_ptr<Window> window, WPARAM event)
      : answers_(std::move(answers)), window_(std::move(window)), event_(event) {
    answers_->Expect();
  }
  ~Delivery() { answers_->Arrive(); }
  Delivery(const Delivery&) = delete;
  Delivery& operator=(const Delivery&) = delete;

  void Run() const {
    if (!window_->IsLive()) return;
    const LRESULT answer = window_->CallProcedure(WM_POWERBROADCAST, event_, 0);
    if (event_ == PBT_APMQUERYSUSPEND && answer == BROADCAST_QUERY_DENY) {
      LogLine("a window refuses that the machine sleeps, which cannot be prevented");
    }
  }

 private:
  const std::shared_ptr<PowerAnswers> answers_;
  const std::shared_ptr<Window> window_;
  const WPARAM event_;
};

}  // namespace

void PowerAnswers::Expect() {
  const std::lock_guard lock(mutex_);
  ++missing_;
}

void PowerAnswers::Arrive() {
  const std::lock_guard lock(mutex_);
  if (--missing_ == 0) complete_.notify_all();
}

void PowerAnswers::Await(const std::stop_token& ended) {
  std::unique_lock lock(mutex_);
  complete_.wait_for(lock, ended, kLongestAnswer, [this] { return missing_ == 0; });
}

std::shared_ptr<PowerAnswers> BroadcastPowerEvents(std::initializer_list<WPARAM> events) {
  auto answers = std::make_shared<PowerAnswers>();
  for (const WPARAM event : events) {
    for (const auto& window : Windows().TopLevel()) {
      const auto delivery = std::make_shared<Delivery>(answers, window, event);
      if (window->BelongsToCaller()) {
        delivery->Run();
      } else {
        window->Queue()->Defer([delivery] { delivery->Run(); });
      }
    }
  }
  return answers;
}

}  // namespace platform
