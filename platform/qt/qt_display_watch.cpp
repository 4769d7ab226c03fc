#include "platform/qt/qt_display_watch.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

#include "platform/qt/qt_desktop_loss.h"

namespace platform {
namespace {

using namespace std::chrono_literals;

// For joining and for leaving the display.
constexpr auto kJoiningTime = 10s;
// How long the window thread is at work before the server is asked, and the server's time to
// answer.
constexpr auto kTimeBeforeAsking = 4s;
constexpr auto kTimeToAnswer = 10s;
constexpr auto kLookInterval = 500ms;

// Abstract names begin with a zero.
bool IsOfDisplayServer(int descriptor) {
  sockaddr_un peer{};
  socklen_t length = sizeof(peer);
  if (::getpeername(descriptor, reinterpret_cast<sockaddr*>(&peer), &length) != 0) return false;
  if (peer.sun_family != AF_UNIX) return false;
  const std::string_view name(peer.sun_path, length - offsetof(sockaddr_un, sun_path));
  return name.find("/.X11-unix/X") != name.npos || name.find("/wayland-") != name.npos;
}

}  // namespace

void BreakDisplayConnection() {
  std::error_code error;
  for (const auto& each : std::filesystem::directory_iterator("/proc/self/fd", error)) {
    const std::string name = each.path().filename();
    int descriptor = -1;
    std::from_chars(name.data(), name.data() + name.size(), descriptor);
    if (IsOfDisplayServer(descriptor)) ::shutdown(descriptor, SHUT_RDWR);
  }
}

QtDisplayWatch::QtDisplayWatch() {
  thread_ = std::thread([this] { Watch(); });
}

QtDisplayWatch::~QtDisplayWatch() {
  {
    const std::lock_guard lock(mutex_);
    ended_ = true;
    changed_.notify_all();
  }
  thread_.join();
}

void QtDisplayWatch::OnJoined(xcb_connection_t* display) {
  const std::lock_guard lock(mutex_);
  phase_ = Phase::kJoined;
  display_ = display;
  since_ = Clock::now();
}

void QtDisplayWatch::OnLeaving() {
  std::unique_lock lock(mutex_);
  phase_ = Phase::kLeaving;
  since_ = Clock::now();
  isIdle_ = false;
  changed_.notify_all();
  changed_.wait(lock, [this] { return !question_.joinable(); });
}

void QtDisplayWatch::OnLost() {
  const std::lock_guard lock(mutex_);
  display_ = nullptr;
}

void QtDisplayWatch::OnIdle() {
  isIdle_ = true;
}

void QtDisplayWatch::NoteBusy() {
  const std::lock_guard lock(mutex_);
  since_ = Clock::now();
  if (isParked_) changed_.notify_all();
}

void QtDisplayWatch::Watch() {
  std::unique_lock lock(mutex_);
  while (!ended_) {
    isParked_ = !HasWork();
    if (isParked_) {
      changed_.wait(lock, [this] { return ended_ || HasWork(); });
      isParked_ = false;
    } else {
      changed_.wait_for(lock, kLookInterval);
      Look(Clock::now());
    }
  }
  EndQuestion();
}

void QtDisplayWatch::Look(Clock::time_point now) {
  if (question_.joinable() && isAnswered_) {
    EndQuestion();
    since_ = now;
  }
  if (isIdle_) return;
  if (phase_ == Phase::kJoined) {
    CheckAnswer(now);
  } else if (now - since_ >= kJoiningTime) {
    // Again and again: the toolkit may try another way to the server.
    BreakDisplayConnection();
    if (phase_ == Phase::kJoining) InterruptJoining();
  }
}

void QtDisplayWatch::CheckAnswer(Clock::time_point now) {
  if (question_.joinable()) {
    if (now - std::max(asked_, since_) >= kTimeToAnswer) BreakDisplayConnection();
  } else if (display_ != nullptr && now - since_ >= kTimeBeforeAsking) {
    Ask(now);
  }
}

void QtDisplayWatch::Ask(Clock::time_point now) {
  asked_ = now;
  isAnswered_ = false;
  question_ = std::thread([this, display = display_] {
    std::free(xcb_get_input_focus_reply(display, xcb_get_input_focus(display), nullptr));
    isAnswered_ = true;
  });
}

void QtDisplayWatch::EndQuestion() {
  if (!question_.joinable()) return;
  question_.join();
  changed_.notify_all();
}

}  // namespace platform
