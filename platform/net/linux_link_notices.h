// The kernel's notices of links that are added, changed and removed, with their counters at that
// moment. The notices wait in a socket until Take is called, so no thread is needed. One thread at
// a time.
#pragma once

#include <optional>

#include "platform/net/counter_base.h"
#include "platform/net/linux_netlink.h"

namespace platform {

// The name, index and counters of a link, from a message. Nothing when the message is about
// something else, such as a bridge port.
std::optional<LinkReading> ReadingOf(const nlmsghdr& message);

class LinkNotices {
 public:
  // Reports to `counted` every notice since the last call. True when there was one. The first call
  // opens the socket, in the network namespace of the calling thread; there are no notices of
  // earlier changes.
  bool Take(CounterBase& counted);

 private:
  bool Open();

  NetlinkSocketPointer socket_;
  bool errorLogged_ = false;
};

}  // namespace platform
