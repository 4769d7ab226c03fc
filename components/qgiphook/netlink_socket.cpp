#include "netlink_socket.h"

#include <sys/socket.h>

namespace quillgate::gate {

NetlinkSocket OpenNetlink(int bus, unsigned groups) {
  NetlinkSocket socket(mnl_socket_open2(bus, SOCK_CLOEXEC));
  if (socket == nullptr || mnl_socket_bind(socket.get(), groups, MNL_SOCKET_AUTOPID) < 0) return {};
  return socket;
}

}  // namespace quillgate::gate
