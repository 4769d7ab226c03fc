#include "netlink_query.h"

#include <cerrno>
#include <system_error>

#include "netlink_socket.h"

namespace quillgate::gate {

namespace {

constexpr std::size_t kRequestBytes = 256;
constexpr std::size_t kReplyBytes = 32768;  // the most that the kernel sends at once

[[noreturn]] void ThrowError() {
  throw std::system_error(errno, std::generic_category());
}

// The callback is called from C: an exception of `read` is kept until the C code has returned.
struct Reading {
  const std::function<void(const nlmsghdr*)>& read;
  std::exception_ptr failure;
};

int ReadMessage(const nlmsghdr* message, void* context) noexcept {
  auto& reading = *static_cast<Reading*>(context);
  try {
    reading.read(message);
    return MNL_CB_OK;
  } catch (...) {
    reading.failure = std::current_exception();
    return MNL_CB_STOP;
  }
}

}  // namespace

NetlinkQuery::NetlinkQuery(int bus, std::uint16_t type, std::uint16_t flags)
    : bus_(bus), request_(kRequestBytes), message_(mnl_nlmsg_put_header(request_.data())) {
  message_->nlmsg_type = type;
  message_->nlmsg_flags = static_cast<std::uint16_t>(NLM_F_REQUEST | flags);
  message_->nlmsg_seq = 1;
}

void NetlinkQuery::Run(const std::function<void(const nlmsghdr*)>& read) {
  const NetlinkSocket socket = OpenNetlink(bus_);
  if (socket == nullptr) ThrowError();
  if (mnl_socket_sendto(socket.get(), message_, message_->nlmsg_len) < 0) ThrowError();

  Reading reading{read, nullptr};
  std::vector<char> buffer(kReplyBytes);
  const unsigned port = mnl_socket_get_portid(socket.get());
  int state = MNL_CB_OK;
  while (state > MNL_CB_STOP) {
    const ssize_t bytes = mnl_socket_recvfrom(socket.get(), buffer.data(), buffer.size());
    if (bytes < 0) ThrowError();
    state = mnl_cb_run(buffer.data(), static_cast<std::size_t>(bytes), message_->nlmsg_seq, port,
                       ReadMessage, &reading);
  }
  if (reading.failure) std::rethrow_exception(reading.failure);
  if (state < 0) ThrowError();
}

}  // namespace quillgate::gate
