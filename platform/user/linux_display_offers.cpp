#include "platform/user/linux_display_offers.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platform/account/linux_accounts.h"
#include "platform/account/session_watch.h"
#include "platform/kernel/file_descriptor.h"
#include "platform/kernel/linux_socket_address.h"
#include "platform/kernel/log.h"
#include "platform/service/process_renewal.h"
#include "platform/user/desktop.h"
#include "platform/user/display_offer.h"

namespace platform {
namespace {

using std::chrono::steady_clock;

// Anybody may connect, so one account's connections are limited as well as all.
constexpr std::ptrdiff_t kMostOfAccount = 4;
constexpr std::size_t kMostConnections = 32;
constexpr std::size_t kLongestMessage = 256;
// Between two displays that cannot be joined, whoever offers them.
constexpr std::chrono::seconds kShortestPause{1};
constexpr std::chrono::seconds kLongestPause{60};

struct Connection {
  FileDescriptor socket;
  HeldOffer held;
  bool isMade = false;  // the offer has arrived
};

// Root is known by its number: an account of a directory may have the same name.
std::wstring PeerOf(int socket) {
  ucred peer{};
  socklen_t size = sizeof peer;
  if (::getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) != 0) return {};
  if (peer.uid == 0) return std::wstring(kRootAccount);
  std::wstring name = NameOfAccount(peer.uid);
  return name == kRootAccount ? std::wstring() : name;
}

FileDescriptor Listen(const std::filesystem::path& path) {
  FileDescriptor listener(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  const SocketAddress address(path.native());
  if (!address.IsValid()) return {};
  ::unlink(path.c_str());
  const bool isBound = ::bind(listener.Get(), address.Get(), SocketAddress::Size()) == 0;
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
  std::optional<HeldOffer> Chosen();
  void Join(const HeldOffer& chosen);
  void Wake() const { ::eventfd_write(wake_.Get(), 1); }

  const FileDescriptor listener_;
  const FileDescriptor wake_;

  // Of the thread.
  std::vector<Connection> connections_;
  // The display that is being joined or has been.
  std::optional<HeldOffer> joined_;
  std::chrono::seconds pause_ = kShortestPause;
  steady_clock::time_point nextJoin_;

  std::mutex mutex_;
  SeatState seat_;
  // Whether the display was joined, once it has been tried; false again when it was lost.
  std::optional<bool> outcome_;
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
  const auto left = nextJoin_ - steady_clock::now();
  const auto limit = std::chrono::ceil<std::chrono::milliseconds>(left).count();
  ::poll(entries.data(), entries.size(), limit > 0 ? static_cast<int>(limit) : -1);
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

std::optional<HeldOffer> DisplayOffers::Chosen() {
  std::vector<HeldOffer> offers;
  for (const Connection& each : connections_) {
    if (each.isMade) offers.push_back(each.held);
  }
  const std::lock_guard lock(mutex_);
  const HeldOffer* const chosen = ChooseOffer(offers, seat_);
  return chosen != nullptr ? std::optional(*chosen) : std::nullopt;
}

void DisplayOffers::Follow() {
  NoteOutcome();
  const auto chosen = Chosen();
  const DesktopUse use = CurrentDesktopUse();
  // A process that was started on a display stays there.
  const bool isElsewhere = use == DesktopUse::kJoined && joined_.has_value() &&
                           chosen.has_value() && AreOfDifferentSessions(*joined_, *chosen);
  SetRenewalWanted(isElsewhere || use == DesktopUse::kSpent);
  const bool isFree = use == DesktopUse::kNone && !joined_.has_value();
  if (isFree && chosen.has_value() && steady_clock::now() >= nextJoin_) Join(*chosen);
}

void DisplayOffers::NoteOutcome() {
  std::optional<bool> outcome;
  {
    const std::lock_guard lock(mutex_);
    outcome = std::exchange(outcome_, std::nullopt);
  }
  if (!outcome.has_value()) return;
  if (*outcome) {
    pause_ = kShortestPause;
    return;
  }
  // The display could not be joined, or was lost. Who still has it offers it again after a while.
  std::erase_if(connections_, [&](const Connection& each) { return each.held == joined_; });
  joined_.reset();
  nextJoin_ = steady_clock::now() + pause_;
  pause_ = std::min(2 * pause_, kLongestPause);
}

void DisplayOffers::Join(const HeldOffer& chosen) {
  const DisplayVariables variables = {
      {"DISPLAY", chosen.offer.display}, {"QT_QPA_PLATFORM", "xcb"}, {"WAYLAND_DISPLAY", ""}};
  const bool isTried = JoinDesktopLater(variables, [this](bool isJoined) {
    const std::lock_guard lock(mutex_);
    outcome_ = isJoined;
    Wake();
  });
  if (isTried) joined_ = chosen;
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
