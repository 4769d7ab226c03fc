// The kernel's interfaces, read through rtnetlink alone, so that it works in any network namespace
// and without /sys. Their counters go on when a card is pulled and put back. Any thread.
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
  // Empty when the kernel does not answer, with a line in the log.
  std::vector<NetworkInterface> List() override;

  // One request and one answer, and what was told of links since the last look; no other work.
  std::optional<InterfaceCounters> Counters(std::wstring_view name) override;

 private:
  // Reads until nothing has happened to links meanwhile, a few times at most; whether so.
  bool ReadUndisturbed(const std::function<bool()>& read);
  InterfaceCounters Counted(const LinkReading& reading, bool undisturbed);

  NetlinkSocket socket_{NETLINK_ROUTE};
  std::mutex mutex_;  // over a reading and its counting: what is read first is counted first
  LinkNotices notices_;
  CounterBase counted_;
};

}  // namespace platform
