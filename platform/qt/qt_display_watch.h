// Sees to it that a display server that does not answer costs the desktop alone: a thread of its
// own breaks the connection when the window thread has waited too long for the server, and the
// toolkit then finds it broken. Joining and leaving the display have a limit each. In between,
// while the window thread is at work, the server is asked something now and then on the toolkit's
// own connection (X11): answers come in the order of the questions, so whatever the window thread
// may be waiting for is answered before.
#pragma once

#include <xcb/xcb.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace platform {

// Shuts down what connects the process with a display server. Any thread.
void BreakDisplayConnection();

class QtDisplayWatch {
 public:
  // By the window thread, which is about to join the display.
  QtDisplayWatch();
  ~QtDisplayWatch();
  QtDisplayWatch(const QtDisplayWatch&) = delete;
  QtDisplayWatch& operator=(const QtDisplayWatch&) = delete;

  // --- window thread ---
  // The display has been joined. Null: not by X11, so nothing is asked.
  void OnJoined(xcb_connection_t* display);
  // The display is about to be left; the connection is not used any more when this returns.
  void OnLeaving();
  // The display is gone.
  void OnLost();
  // About to wait for events, and having something to do again. It is at work at first.
  void OnIdle();
  void OnBusy() {
    if (isIdle_.exchange(false)) NoteBusy();
  }

 private:
  using Clock = std::chrono::steady_clock;
  enum class Phase { kJoining, kJoined, kLeaving };

  void NoteBusy();
  bool HasWork() const {
    return phase_ != Phase::kJoined || question_.joinable() || (display_ != nullptr && !isIdle_);
  }
  void Watch();
  void Look(Clock::time_point now);
  void Ask(Clock::time_point now);
  void EndQuestion();
  void CheckAnswer(Clock::time_point now);

  std::atomic<bool> isIdle_ = false;

  std::mutex mutex_;
  std::condition_variable changed_;
  bool ended_ = false;
  bool isParked_ = false;
  Phase phase_ = Phase::kJoining;
  xcb_connection_t* display_ = nullptr;
  // Since when the window thread may have waited for the same thing.
  Clock::time_point since_ = Clock::now();
  // The question that is open, if one is, and since when.
  std::thread question_;
  std::atomic<bool> isAnswered_ = false;
  Clock::time_point asked_;
  std::thread thread_;
};

}  // namespace platform
