#include "platform/device/linux_packet_filter.h"

#include <arpa/inet.h>
#include <libmnl/libmnl.h>
#include <linux/netfilter/nf_tables.h>
#include <linux/netfilter/nfnetlink.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <winerror.h>

#include <array>
#include <cerrno>
#include <memory>

namespace platform {
namespace {

struct CloseSocket {
  void operator()(mnl_socket* socket) const { mnl_socket_close(socket); }
};
using NetlinkSocket = std::unique_ptr<mnl_socket, CloseSocket>;

NetlinkSocket OpenSocket() {
  NetlinkSocket socket(mnl_socket_open2(NETLINK_NETFILTER, SOCK_CLOEXEC));
  if (socket == nullptr || mnl_socket_bind(socket.get(), 0, MNL_SOCKET_AUTOPID) < 0) return nullptr;
  // The kernel answers at once; a module that loads takes longer, but nothing takes this long.
  const timeval limit{.tv_sec = 5, .tv_usec = 0};
  ::setsockopt(mnl_socket_get_fd(socket.get()), SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
  return socket;
}

// The number of the ruleset's generation is the smallest question that nf_tables answers.
bool Ask(const mnl_socket* socket, unsigned sequence) {
  alignas(nlmsghdr) std::array<char, 256> buffer{};
  nlmsghdr* header = mnl_nlmsg_put_header(buffer.data());
  header->nlmsg_type = (NFNL_SUBSYS_NFTABLES << 8) | NFT_MSG_GETGEN;
  header->nlmsg_flags = NLM_F_REQUEST;
  header->nlmsg_seq = sequence;
  auto* family = static_cast<nfgenmsg*>(mnl_nlmsg_put_extra_header(header, sizeof(nfgenmsg)));
  family->nfgen_family = AF_UNSPEC;
  family->version = NFNETLINK_V0;
  family->res_id = htons(0);
  return mnl_socket_sendto(socket, header, header->nlmsg_len) >= 0;
}

// 0, or the value of errno with which the kernel refuses.
int Answer(const mnl_socket* socket, unsigned sequence) {
  std::array<char, 8192> buffer{};
  const ssize_t bytes = mnl_socket_recvfrom(socket, buffer.data(), buffer.size());
  if (bytes < 0) return errno;
  const unsigned port = mnl_socket_get_portid(socket);
  const int result =
      mnl_cb_run(buffer.data(), static_cast<std::size_t>(bytes), sequence, port, nullptr, nullptr);
  return result < 0 ? errno : 0;
}

}  // namespace

DWORD AskPacketFilter() {
  constexpr unsigned kSequence = 1;
  const NetlinkSocket socket = OpenSocket();
  if (socket == nullptr || !Ask(socket.get(), kSequence)) return ERROR_FILE_NOT_FOUND;
  switch (Answer(socket.get(), kSequence)) {
    case 0:
      return NO_ERROR;
    case EPERM:
    case EACCES:
      return ERROR_ACCESS_DENIED;
    default:
      return ERROR_FILE_NOT_FOUND;
  }
}

}  // namespace platform
