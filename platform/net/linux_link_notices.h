// What the kernel tells of links that come, change and go, with their counters at that moment. The
// notices wait in a socket until they are taken; so no thread is needed. One thread at a time.
#pragma once

#include <optional>

#include "platform/net/counter_base.h"
#include "platform/net/linux_netlink.h"

namespace platform {

// The name, index and counters that a message about a link holds; nothing when it tells of
// something else, such as a link's part in a bridge.
std::optional<LinkReading> ReadingOf(const nlmsghdr& message);

class LinkNotices {
 public:
  // Brings the counters up to date with everything that was told since the last call. The first
  // call opens the socket, in the network namespace of the calling thread; what happened before is
  // not told. Whether anything was told.
  bool Take(CounterBase& counted);

 private:
  bool Open();

  NetlinkSocketPointer socket_;
  bool complained_ = false;
};

}  // namespace platform
