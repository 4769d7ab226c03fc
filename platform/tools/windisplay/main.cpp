// Offers the display of the session that it is started in to a service, which shows its windows
// there while the session is on the screen. The service comes as root, so root is let in. Ends with
// the display.
//
// Usage: windisplay SOCKET
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "platform/kernel/encoding.h"
#include "platform/kernel/file_descriptor.h"
#include "platform/kernel/linux_socket_address.h"
#include "platform/user/display_offer.h"

namespace {

using namespace platform;
using std::chrono::seconds;

// Between two tries, longer each time while the service does not keep the connection.
constexpr seconds kShortestPause{1};
constexpr seconds kLongestPause{60};
constexpr int kNoLimit = -1;
constexpr int kNoService = -1;
// Access by the account that the kernel tells (xhost(1), Xsecurity(7)).
constexpr std::uint8_t kServerInterpreted = 5;
constexpr std::string_view kLocalRoot{"localuser\0root", 14};

struct Disconnector {
  void operator()(xcb_connection_t* display) const { ::xcb_disconnect(display); }
};
using Display = std::unique_ptr<xcb_connection_t, Disconnector>;

std::string Variable(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr ? value : "";
}

bool LetRootIn(xcb_connection_t* display) {
  const auto request = ::xcb_change_hosts_checked(
      display, XCB_HOST_MODE_INSERT, kServerInterpreted, kLocalRoot.size(),
      reinterpret_cast<const std::uint8_t*>(kLocalRoot.data()));
  const std::unique_ptr<xcb_generic_error_t, void (*)(void*)> error(
      ::xcb_request_check(display, request), std::free);
  return error == nullptr && ::xcb_connection_has_error(display) == 0;
}

FileDescriptor Offer(const SocketAddress& address, const DisplayOffer& offer) {
  FileDescriptor socket(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
  const std::string message = EncodeOffer(offer);
  const bool isMade = ::connect(socket.Get(), address.Get(), SocketAddress::Size()) == 0 &&
                      ::send(socket.Get(), message.data(), message.size(), MSG_NOSIGNAL) > 0;
  return isMade ? std::move(socket) : FileDescriptor();
}

// True when the service has ended the connection (-1: there is none), or after the limit; false
// when the display has ended.
bool Await(const Display& display, int service, int limitMilliseconds) {
  pollfd entries[] = {{::xcb_get_file_descriptor(display.get()), POLLIN, 0}, {service, POLLIN, 0}};
  for (;;) {
    const int ready = ::poll(entries, 2, limitMilliseconds);
    while (xcb_generic_event_t* const event = ::xcb_poll_for_event(display.get()))
      std::free(event);
    if (::xcb_connection_has_error(display.get()) != 0) return false;
    if (ready == 0 || entries[1].revents != 0) return true;
  }
}

// An update has replaced the program: the new one goes on. A removal has removed it: it ends.
void FollowUpdates(char* arguments[]) {
  constexpr std::string_view kDeleted = " (deleted)";
  std::error_code error;
  std::string program = std::filesystem::read_symlink("/proc/self/exe", error);
  if (!program.ends_with(kDeleted)) return;
  program.resize(program.size() - kDeleted.size());
  ::execv(program.c_str(), arguments);
  std::exit(EXIT_SUCCESS);
}

[[noreturn]] void KeepOffering(const Display& display, const DisplayOffer& offer,
                               char* arguments[]) {
  const SocketAddress address(arguments[1]);
  seconds pause = kShortestPause;
  for (;;) {
    const auto start = std::chrono::steady_clock::now();
    const FileDescriptor service = Offer(address, offer);
    if (service.IsOpen() && !Await(display, service.Get(), kNoLimit)) std::exit(EXIT_SUCCESS);
    const bool wasKept = std::chrono::steady_clock::now() - start > kLongestPause;
    const std::chrono::milliseconds rest = pause;
    if (!Await(display, kNoService, static_cast<int>(rest.count()))) std::exit(EXIT_SUCCESS);
    FollowUpdates(arguments);
    pause = wasKept ? kShortestPause : std::min(2 * pause, kLongestPause);
  }
}

}  // namespace

int main(int argumentCount, char* arguments[]) {
  if (argumentCount != 2 || !SocketAddress(arguments[1]).IsValid()) {
    std::fputs("usage: windisplay SOCKET\n", stderr);
    return 2;
  }
  const DisplayOffer offer{Variable("DISPLAY"), Wide(Variable("XDG_SESSION_ID"))};
  if (!IsLocalDisplay(offer.display)) {
    std::fputs("windisplay: this session has no X11 display of this machine\n", stderr);
    return EXIT_FAILURE;
  }
  const Display display(::xcb_connect(nullptr, nullptr));
  if (!LetRootIn(display.get())) {
    std::fputs("windisplay: the display cannot be opened for root\n", stderr);
    return EXIT_FAILURE;
  }
  KeepOffering(display, offer, arguments);
}
