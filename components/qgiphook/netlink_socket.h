// A netlink socket of this module's own. One thread at a time.
#pragma once

#include <libmnl/libmnl.h>

#include <memory>

namespace quillgate::gate {

struct NetlinkSocketCloser {
  void operator()(mnl_socket* socket) const { mnl_socket_close(socket); }
};
using NetlinkSocket = std::unique_ptr<mnl_socket, NetlinkSocketCloser>;

// In the network namespace of the calling thread; it hears of what is told to those groups, a mask.
// Null, with errno set, when the kernel does not let it.
NetlinkSocket OpenNetlink(int bus, unsigned groups = 0);

}  // namespace quillgate::gate
