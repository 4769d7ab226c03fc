// The kernel's interfaces, read through rtnetlink alone, so that they can be read in any network
// namespace and without /sys. Counters continue when a card is removed and inserted again. Any
// thread.
#pragma once

#include <functional>
#include <mutex>

#include "platform/net/counter_base.h"
#include "platform/net/interface_source.h"
#include "platform/net/linux_link_notices.h"
#include "platform/net/linux_netlink.h"

namespace platform {

class LinuxInterfaces final : public InterfaceSource {
 public:
  // Empty, with a line in the log, when the interfaces cannot be read.
  std::vector<NetworkInterface> List() override;

  // Costs one request, one reply and reading the waiting notices.
  std::optional<InterfaceCounters> Counters(std::wstring_view name) override;

 private:
  // Repeats `read`, a few times at most, until it succeeds without a notice arriving meanwhile.
  // True when that was so.
  bool ReadUndisturbed(const std::function<bool()>& read);
  InterfaceCounters Counted(const LinkReading& reading, bool undisturbed);

  NetlinkSocket socket_{NETLINK_ROUTE};
  std::mutex mutex_;  // held while reading and counting, so that readings are counted in order
  LinkNotices notices_;
  CounterBase counted_;
};

}  // namespace platform
