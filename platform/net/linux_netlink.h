// A netlink socket that sends a request and reads its replies. The socket is opened at the first
// request, in the network namespace of the calling thread, and kept. Any thread; one request at a
// time.
#pragma once

#include <libmnl/libmnl.h>

#include <array>
#include <functional>
#include <memory>
#include <mutex>
#include <span>

namespace platform {

// The attributes after a message's header, or nested in another attribute, by type.
class NetlinkAttributes {
 public:
  NetlinkAttributes(const nlmsghdr& message, std::size_t headerBytes);
  explicit NetlinkAttributes(const nlattr& nest);
  NetlinkAttributes(const void* first, std::size_t bytes);

  // Null when the attribute is missing.
  const nlattr* operator[](std::size_t type) const {
    return type < byType_.size() ? byType_[type] : nullptr;
  }

 private:
  std::array<const nlattr*, 64> byType_{};
};

struct NetlinkSocketCloser {
  void operator()(mnl_socket* socket) const noexcept { ::mnl_socket_close(socket); }
};
using NetlinkSocketPointer = std::unique_ptr<mnl_socket, NetlinkSocketCloser>;

// Opens a socket of a bus (NETLINK_ROUTE, ...), bound to multicast groups of the bus. `flags` are
// added to SOCK_CLOEXEC (socket(2)). Null with errno set on failure, as when the kernel has no such
// bus.
NetlinkSocketPointer OpenNetlink(int bus, unsigned groups = 0, int flags = 0);

class NetlinkSocket {
 public:
  using Handler = std::function<void(const nlmsghdr&)>;

  explicit NetlinkSocket(int bus) : bus_(bus) {}

  // Sends the request, with sequence number and flags set here, and calls the handler for the one
  // reply (AskOne) or for every reply of a dump (AskAll). The handler must not send a request.
  // `buffer` must hold the largest reply. False with errno set when the kernel refuses or cannot be
  // reached, or when the dumped data changed meanwhile.
  bool AskOne(nlmsghdr& request, std::span<char> buffer, const Handler& handler);
  bool AskAll(nlmsghdr& request, std::span<char> buffer, const Handler& handler);

 private:
  enum class Progress { kMore, kDone, kFailed };

  bool Ask(nlmsghdr& request, std::uint16_t flags, std::span<char> buffer, const Handler& handler);
  Progress Read(std::span<const char> datagram, std::uint32_t sequence, bool many,
                const Handler& handler) const;

  const int bus_;
  std::mutex mutex_;
  NetlinkSocketPointer socket_;
  std::uint32_t sequence_ = 0;
};

}  // namespace platform
