#include "platform/net/linux_link_notices.h"

#include <linux/if_link.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <string>

#include "platform/kernel/encoding.h"
#include "platform/kernel/log.h"
#include "platform/net/linux_links.h"

namespace platform {
namespace {

constexpr std::size_t kNoticeBytes = 32 * 1024;
// Holds the notices of some hundred links between two calls of Take.
constexpr int kWaitingBytes = 2 * 1024 * 1024;

void Report(const nlmsghdr& message, CounterBase& counted) {
  const std::optional<LinkReading> reading = ReadingOf(message);
  if (!reading) return;
  if (message.nlmsg_type == RTM_DELLINK) {
    counted.Went(*reading);
  } else {
    counted.Came(*reading);
  }
}

}  // namespace

std::optional<LinkReading> ReadingOf(const nlmsghdr& message) {
  if (message.nlmsg_type != RTM_NEWLINK && message.nlmsg_type != RTM_DELLINK) return std::nullopt;
  const auto& header = *static_cast<const ifinfomsg*>(::mnl_nlmsg_get_payload(&message));
  const NetlinkAttributes attributes(message, sizeof header);
  const nlattr* name = attributes[IFLA_IFNAME];
  const nlattr* statistics = attributes[IFLA_STATS64];
  if (header.ifi_family != AF_UNSPEC || name == nullptr || statistics == nullptr) {
    return std::nullopt;
  }
  return LinkReading{Wide(::mnl_attr_get_str(name)), static_cast<std::uint32_t>(header.ifi_index),
                     CountersOf(statistics)};
}

bool LinkNotices::Take(CounterBase& counted) {
  if (!Open()) return false;
  bool received = false;
  std::array<char, kNoticeBytes> buffer;
  for (;;) {
    const ssize_t length = ::mnl_socket_recvfrom(socket_.get(), buffer.data(), buffer.size());
    // ENOBUFS: the buffer overflowed and notices were lost; the others still wait. The counters of
    // the links concerned continue from their last reading.
    if (length < 0 && (errno == EINTR || errno == ENOBUFS)) continue;
    if (length <= 0) return received;
    received = true;
    int left = static_cast<int>(length);
    const auto* message = reinterpret_cast<const nlmsghdr*>(buffer.data());
    for (; ::mnl_nlmsg_ok(message, left); message = ::mnl_nlmsg_next(message, &left))
      Report(*message, counted);
  }
}

bool LinkNotices::Open() {
  if (socket_) return true;
  socket_ = OpenNetlink(NETLINK_ROUTE, RTMGRP_LINK, SOCK_NONBLOCK);
  if (socket_) {
    const int file = ::mnl_socket_get_fd(socket_.get());
    if (::setsockopt(file, SOL_SOCKET, SO_RCVBUFFORCE, &kWaitingBytes, sizeof kWaitingBytes) != 0)
      ::setsockopt(file, SOL_SOCKET, SO_RCVBUF, &kWaitingBytes, sizeof kWaitingBytes);
    return true;
  }
  if (!errorLogged_) {
    LogLine(std::string("the kernel does not tell of links that go: ") + std::strerror(errno));
  }
  errorLogged_ = true;
  return false;
}

}  // namespace platform
