// The kernel's interfaces, read through rtnetlink alone, so that it works in any network namespace
// and without /sys. Any thread.
#pragma once

#include "platform/net/interface_source.h"
#include "platform/net/linux_netlink.h"

namespace platform {

class LinuxInterfaces final : public InterfaceSource {
 public:
  // Empty when the kernel does not answer, with a line in the log.
  std::vector<NetworkInterface> List() override;

  // One request and one answer; no other work.
  std::optional<InterfaceCounters> Counters(std::wstring_view name) override;

 private:
  NetlinkSocket socket_;
};

}  // namespace platform
