// A netlink socket: one request, all of its answers. The socket is opened when it is first needed,
// in the network namespace of the thread that asks, and kept. Any thread; one request at a time.
#pragma once

#include <libmnl/libmnl.h>

#include <array>
#include <functional>
#include <memory>
#include <mutex>
#include <span>

namespace platform {

// The attributes that follow a message's header, or stand inside another attribute, by their type.
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

// Of a bus (NETLINK_ROUTE, ...) and some of its multicast groups, with flags of socket(2) besides
// SOCK_CLOEXEC. Null, with errno set, when the kernel has no such bus.
NetlinkSocketPointer OpenNetlink(int bus, unsigned groups = 0, int flags = 0);

class NetlinkSocket {
 public:
  using Handler = std::function<void(const nlmsghdr&)>;

  explicit NetlinkSocket(int bus) : bus_(bus) {}

  // Sends the request (its sequence number and flags are set here) and hands every answer to the
  // handler, which must not ask again. `buffer` holds the largest answer. False, with errno set,
  // when the kernel refuses, cannot be reached, or has changed what it was dumping.
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
