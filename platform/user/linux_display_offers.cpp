#include "platform/user/linux_display_offers.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sysexits.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "platform/account/linux_accounts.h"
#include "platform/account/session_watch.h"
#include "platform/kernel/file_descriptor.h"
#include "platform/kernel/log.h"
#include "platform/user/desktop.h"
#include "platform/user/display_offer.h"

namespace platform {
namespace {

// Anybody may connect, so one account's connections are limited as well as all.
constexpr std::ptrdiff_t kMostOfAccount = 4;
constexpr std::size_t kMostConnections = 32;
constexpr std::size_t kLongestMessage = 256;

struct Connection {
  FileDescriptor socket;
  HeldOffer held;
  bool isMade = false;  // the offer has arrived
};

std::wstring PeerOf(int socket) {
  ucred peer{};
  socklen_t size = sizeof peer;
  if (::getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) != 0) return {};
  return NameOfAccount(peer.uid);
}

FileDescriptor Listen(const std::filesystem::path& path) {
  FileDescriptor listener(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.native().size() >= sizeof address.sun_path) return {};
  std::ranges::copy(path.native(), address.sun_path);
  ::unlink(path.c_str());
  const bool isBound =
      ::bind(listener.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  // Whose offer counts is decided by the account that has connected.
  constexpr mode_t kForEverybody = 0666;
  if (!isBound || ::chmod(path.c_str(), kForEverybody) != 0 || ::listen(listener.Get(), 16) != 0) {
    return {};
  }
  return listener;
}

class DisplayOffers final : public SessionObserver {
 public:
  explicit DisplayOffers(const std::filesystem::path& folder)
      : listener_(Listen(folder / "display")), wake_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

  void Run() noexcept;
  void OnSeat(const SeatState& state) override;

 private:
  void Serve();
  void Await();
  void Accept();
  void Receive();
  void Follow();
  void NoteOutcome();
  std::optional<DisplayOffer> Chosen();
  bool IsOffered() const;
  void Join(const DisplayOffer& offer);
  [[noreturn]] static void StartAnew();
  void Wake() const { ::eventfd_write(wake_.Get(), 1); }

  const FileDescriptor listener_;
  const FileDescriptor wake_;

  // Of the thread.
  std::vector<Connection> connections_;
  // The display that is being joined or has been.
  std::optional<DisplayOffer> joined_;

  std::mutex mutex_;
  SeatState seat_;
  std::optional<bool> outcome_;  // whether the display was joined, once it has been tried
};

void DisplayOffers::Run() noexcept {
  try {
    if (!listener_.IsOpen()) return LogLine("desktop: displays cannot be offered here");
    const auto watch = WatchSessions(*this, SleepNotice::kNone);
    for (;;)
      Serve();
  } catch (const std::exception& error) {
    LogLine(std::string("desktop: displays are no longer followed: ") + error.what());
  }
}

void DisplayOffers::OnSeat(const SeatState& state) {
  const std::lock_guard lock(mutex_);
  seat_ = state;
  Wake();
}

void DisplayOffers::Serve() {
  Await();
  Accept();
  Receive();
  Follow();
}

void DisplayOffers::Await() {
  std::vector<pollfd> entries = {{listener_.Get(), POLLIN, 0}, {wake_.Get(), POLLIN, 0}};
  for (const Connection& each : connections_)
    entries.push_back({each.socket.Get(), POLLIN, 0});
  ::poll(entries.data(), entries.size(), -1);
  eventfd_t count = 0;
  ::eventfd_read(wake_.Get(), &count);
}

void DisplayOffers::Accept() {
  for (;;) {
    FileDescriptor socket(
        ::accept4(listener_.Get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    if (!socket.IsOpen()) return;
    Connection connection{std::move(socket), {{}, {}}};
    connection.held.account = PeerOf(connection.socket.Get());
    const auto isSame = [&](const Connection& each) {
      return each.held.account == connection.held.account;
    };
    if (connections_.size() >= kMostConnections) continue;
    if (std::ranges::count_if(connections_, isSame) >= kMostOfAccount) {
      connections_.erase(std::ranges::find_if(connections_, isSame));
    }
    connections_.push_back(std::move(connection));
  }
}

// A connection carries one offer, which holds as long as the connection does.
void DisplayOffers::Receive() {
  std::erase_if(connections_, [](Connection& each) {
    std::array<char, kLongestMessage> buffer{};
    const ssize_t size = ::recv(each.socket.Get(), buffer.data(), buffer.size(), 0);
    if (size < 0) return errno != EAGAIN && errno != EINTR;
    const auto offer = DecodeOffer({buffer.data(), static_cast<std::size_t>(size)});
    if (!offer.has_value() || each.isMade) return true;
    each.held.offer = *offer;
    each.isMade = true;
    return false;
  });
}

std::optional<DisplayOffer> DisplayOffers::Chosen() {
  std::vector<HeldOffer> offers;
  for (const Connection& each : connections_) {
    if (each.isMade) offers.push_back(each.held);
  }
  const std::lock_guard lock(mutex_);
  const HeldOffer* const chosen = ChooseOffer(offers, seat_);
  return chosen != nullptr ? std::optional(chosen->offer) : std::nullopt;
}

void DisplayOffers::Follow() {
  NoteOutcome();
  const auto chosen = Chosen();
  if (!chosen.has_value() || chosen == joined_) return;
  switch (CurrentDesktopUse()) {
    case DesktopUse::kNone:
      if (!joined_.has_value()) Join(*chosen);
      break;
    case DesktopUse::kJoined:
      // A process that was started on a display stays there.
      if (joined_.has_value()) StartAnew();
      break;
    case DesktopUse::kSpent:
      StartAnew();
      break;
  }
}

void DisplayOffers::NoteOutcome() {
  const bool isLost = CurrentDesktopUse() == DesktopUse::kSpent && !IsOffered();
  const std::lock_guard lock(mutex_);
  // Who offers a display that cannot be joined tries again after a while.
  if (outcome_ == false) {
    std::erase_if(connections_, [&](const Connection& each) { return each.held.offer == joined_; });
  }
  if (outcome_ == false || isLost) joined_.reset();
  outcome_.reset();
}

bool DisplayOffers::IsOffered() const {
  return std::ranges::any_of(connections_,
                             [&](const Connection& each) { return each.held.offer == joined_; });
}

void DisplayOffers::Join(const DisplayOffer& offer) {
  const DisplayVariables variables = {
      {"DISPLAY", offer.display}, {"QT_QPA_PLATFORM", "xcb"}, {"WAYLAND_DISPLAY", ""}};
  const bool isTried = JoinDesktopLater(variables, [this](bool isJoined) {
    const std::lock_guard lock(mutex_);
    outcome_ = isJoined;
    Wake();
  });
  if (isTried) joined_ = offer;
}

// Ends the process as a kill does: what it has set in the kernel stays. The status is what a
// service's unit knows as the wish for a new process.
void DisplayOffers::StartAnew() {
  LogLine("desktop: the person on the screen has another display, which a new process joins");
  ::_exit(EX_TEMPFAIL);
}

}  // namespace

void ListenForDisplays() {
  static std::once_flag once;
  std::call_once(once, [] {
    const char* const folder = std::getenv("RUNTIME_DIRECTORY");
    if (folder == nullptr) return;
    auto& offers = *new DisplayOffers(folder);
    std::thread([&offers] { offers.Run(); }).detach();
  });
}

}  // namespace platform
