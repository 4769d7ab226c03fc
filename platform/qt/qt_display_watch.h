// When the display server stops replying, only the desktop is lost, not the process. A thread of
// its own breaks the connection when the window thread has waited too long for the server; the
// toolkit then finds the connection broken. Joining and leaving the display have a time limit each.
// In between, while the window thread is busy, the watch sends the server a query from time to
// time, on the toolkit's own connection (X11). Replies come in the order of the requests, so
// anything the window thread may be waiting for is replied to first.
#pragma once

#include <xcb/xcb.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace platform {

// Shuts down the process's connections to display servers. Any thread.
void BreakDisplayConnection();

class QtDisplayWatch {
 public:
  // Called by the window thread, directly before it joins the display.
  QtDisplayWatch();
  ~QtDisplayWatch();
  QtDisplayWatch(const QtDisplayWatch&) = delete;
  QtDisplayWatch& operator=(const QtDisplayWatch&) = delete;

  // Called on the window thread, like all functions below. The display has been joined. Null: not
  // by X11, so no queries are sent.
  void OnJoined(xcb_connection_t* display);
  // The display is about to be left. The watch does not use the connection after this returns.
  void OnLeaving();
  // The connection to the display is lost.
  void OnLost();
  // The window thread is about to wait for events, or is busy again. It is busy at first.
  void OnIdle();
  void OnBusy() {
    if (isIdle_.exchange(false)) NoteBusy();
  }

 private:
  using Clock = std::chrono::steady_clock;
  enum class Phase { kJoining, kJoined, kLeaving };

  void NoteBusy();
  bool HasWork() const {
    return phase_ != Phase::kJoined || query_.joinable() || (display_ != nullptr && !isIdle_);
  }
  void Watch();
  void Check(Clock::time_point now);
  void SendQuery(Clock::time_point now);
  void JoinQuery();
  void CheckReply(Clock::time_point now);

  std::atomic<bool> isIdle_ = false;

  std::mutex mutex_;
  std::condition_variable changed_;
  bool stopping_ = false;
  bool isParked_ = false;
  Phase phase_ = Phase::kJoining;
  xcb_connection_t* display_ = nullptr;
  // The time since which the window thread may have been waiting for the same reply.
  Clock::time_point since_ = Clock::now();
  // The thread of the pending query, if there is one, and when the query was sent.
  std::thread query_;
  std::atomic<bool> hasReply_ = false;
  Clock::time_point sentAt_;
  std::thread thread_;
};

}  // namespace platform
