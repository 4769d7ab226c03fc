// An owning netlink socket. One thread at a time.
#pragma once

#include <libmnl/libmnl.h>

#include <memory>

namespace quillgate::gate {

struct NetlinkSocketCloser {
  void operator()(mnl_socket* socket) const { mnl_socket_close(socket); }
};
using NetlinkSocket = std::unique_ptr<mnl_socket, NetlinkSocketCloser>;

// Opens a socket in the network namespace of the calling thread that receives the messages of these
// multicast groups, a mask. Returns null, with errno set, when the kernel refuses.
NetlinkSocket OpenNetlink(int bus, unsigned groups = 0);

}  // namespace quillgate::gate
