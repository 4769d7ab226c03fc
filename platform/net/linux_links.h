// The kernel's links with their addresses and routes, assembled from the messages of rtnetlink. Any
// thread.
#pragma once

#include <cstdint>
#include <limits>
#include <map>

#include "platform/net/interface_source.h"
#include "platform/net/linux_netlink.h"

namespace platform {

// The order of cards, after the one with the default route.
enum class Nature { kPhysical, kVirtual, kPartOfAnother, kNoCard };

struct Link {
  NetworkInterface interface;
  Nature nature = Nature::kVirtual;
  std::uint32_t routeMetric = std::numeric_limits<std::uint32_t>::max();
  bool hasDefaultRoute = false;
};

using Links = std::map<std::uint32_t, Link>;  // by index

// The counters of an IFLA_STATS64 attribute; zero without one.
InterfaceCounters CountersOf(const nlattr* attribute);

// Each takes one reply to RTM_GETLINK, RTM_GETADDR or RTM_GETROUTE. Only IPv4 addresses and routes
// are added, since the tables built from them have no others. Those of unknown links are ignored.
void AddLink(Links& links, const nlmsghdr& message);
void AddAddress(Links& links, const nlmsghdr& message);
void AddDefaultRoute(Links& links, const nlmsghdr& message);

}  // namespace platform
