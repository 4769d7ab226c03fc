#include "platform/net/linux_netlink.h"

#include <sys/socket.h>

#include <cerrno>

namespace platform {

NetlinkAttributes::NetlinkAttributes(const nlmsghdr& message, std::size_t headerBytes)
    : NetlinkAttributes(::mnl_nlmsg_get_payload_offset(&message, headerBytes),
                        ::mnl_nlmsg_get_payload_len(&message) - MNL_ALIGN(headerBytes)) {}

NetlinkAttributes::NetlinkAttributes(const nlattr& nest)
    : NetlinkAttributes(::mnl_attr_get_payload(&nest), ::mnl_attr_get_payload_len(&nest)) {}

NetlinkAttributes::NetlinkAttributes(const void* first, std::size_t bytes) {
  const char* const end = static_cast<const char*>(first) + bytes;
  const auto* each = static_cast<const nlattr*>(first);
  while (::mnl_attr_ok(each, static_cast<int>(end - reinterpret_cast<const char*>(each)))) {
    const std::size_t type = ::mnl_attr_get_type(each);
    if (type < byType_.size()) byType_[type] = each;
    each = ::mnl_attr_next(each);
  }
}

NetlinkSocketPointer OpenNetlink(int bus, unsigned groups, int flags) {
  NetlinkSocketPointer socket(::mnl_socket_open2(bus, SOCK_CLOEXEC | flags));
  const bool isBound = socket && ::mnl_socket_bind(socket.get(), groups, MNL_SOCKET_AUTOPID) == 0;
  return isBound ? std::move(socket) : nullptr;
}

bool NetlinkSocket::AskOne(nlmsghdr& request, std::span<char> buffer, const Handler& handler) {
  return Ask(request, NLM_F_REQUEST, buffer, handler);
}

bool NetlinkSocket::AskAll(nlmsghdr& request, std::span<char> buffer, const Handler& handler) {
  return Ask(request, NLM_F_REQUEST | NLM_F_DUMP, buffer, handler);
}

bool NetlinkSocket::Ask(nlmsghdr& request, std::uint16_t flags, std::span<char> buffer,
                        const Handler& handler) {
  const std::lock_guard lock(mutex_);
  if (socket_ == nullptr) socket_ = OpenNetlink(bus_);
  if (socket_ == nullptr) return false;
  request.nlmsg_flags = flags;
  request.nlmsg_seq = ++sequence_;
  Progress progress = Progress::kMore;
  if (::mnl_socket_sendto(socket_.get(), &request, request.nlmsg_len) < 0) {
    progress = Progress::kFailed;
  }
  while (progress == Progress::kMore) {
    const ssize_t length = ::mnl_socket_recvfrom(socket_.get(), buffer.data(), buffer.size());
    if (length < 0 && errno == EINTR) continue;
    progress = length < 0 ? Progress::kFailed
                          : Read(buffer.first(static_cast<std::size_t>(length)), sequence_,
                                 (flags & NLM_F_DUMP) != 0, handler);
  }
  if (progress == Progress::kDone) return true;
  const int error = errno;
  // Late replies to a failed request must not be read as replies to the next one.
  if (error != ENODEV) socket_.reset();
  errno = error;
  return false;
}

NetlinkSocket::Progress NetlinkSocket::Read(std::span<const char> datagram, std::uint32_t sequence,
                                            bool many, const Handler& handler) const {
  int left = static_cast<int>(datagram.size());
  const auto* message = reinterpret_cast<const nlmsghdr*>(datagram.data());
  for (; ::mnl_nlmsg_ok(message, left); message = ::mnl_nlmsg_next(message, &left)) {
    if (message->nlmsg_seq != sequence) continue;
    if ((message->nlmsg_flags & NLM_F_DUMP_INTR) != 0) {
      errno = EAGAIN;
      return Progress::kFailed;
    }
    if (message->nlmsg_type == NLMSG_DONE) return Progress::kDone;
    if (message->nlmsg_type == NLMSG_ERROR) {
      const auto* reply = static_cast<const nlmsgerr*>(::mnl_nlmsg_get_payload(message));
      errno = -reply->error;
      return Progress::kFailed;
    }
    handler(*message);
    if (!many) return Progress::kDone;
  }
  return Progress::kMore;
}

}  // namespace platform
