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

// The time limit for joining, and for leaving the display.
constexpr auto kJoiningLimit = 10s;
// How long the window thread is busy before the server is queried, and the server's time to reply.
constexpr auto kTimeBeforeQuery = 4s;
constexpr auto kTimeToReply = 10s;
constexpr auto kCheckInterval = 500ms;

// Abstract socket names begin with a zero byte.
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
    stopping_ = true;
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
  changed_.wait(lock, [this] { return !query_.joinable(); });
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
  while (!stopping_) {
    isParked_ = !HasWork();
    if (isParked_) {
      changed_.wait(lock, [this] { return stopping_ || HasWork(); });
      isParked_ = false;
    } else {
      changed_.wait_for(lock, kCheckInterval);
      Check(Clock::now());
    }
  }
  JoinQuery();
}

void QtDisplayWatch::Check(Clock::time_point now) {
  if (query_.joinable() && hasReply_) {
    JoinQuery();
    since_ = now;
  }
  if (isIdle_) return;
  if (phase_ == Phase::kJoined) {
    CheckReply(now);
  } else if (now - since_ >= kJoiningLimit) {
    // Repeated: the toolkit may try another connection to the server.
    BreakDisplayConnection();
    if (phase_ == Phase::kJoining) InterruptJoining();
  }
}

void QtDisplayWatch::CheckReply(Clock::time_point now) {
  if (query_.joinable()) {
    if (now - std::max(sentAt_, since_) >= kTimeToReply) BreakDisplayConnection();
  } else if (display_ != nullptr && now - since_ >= kTimeBeforeQuery) {
    SendQuery(now);
  }
}

void QtDisplayWatch::SendQuery(Clock::time_point now) {
  sentAt_ = now;
  hasReply_ = false;
  query_ = std::thread([this, display = display_] {
    std::free(xcb_get_input_focus_reply(display, xcb_get_input_focus(display), nullptr));
    hasReply_ = true;
  });
}

void QtDisplayWatch::JoinQuery() {
  if (!query_.joinable()) return;
  query_.join();
  changed_.notify_all();
}

}  // namespace platform
