// The kernel's links with their addresses and routes, put together from the messages of rtnetlink.
#pragma once

#include <cstdint>
#include <limits>
#include <map>

#include "platform/net/interface_source.h"
#include "platform/net/linux_netlink.h"

namespace platform {

// In which order cards are offered, apart from the one with the default route.
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

// One answer of RTM_GETLINK, RTM_GETADDR and RTM_GETROUTE each. Addresses and routes of IPv4 alone,
// since the tables that are made of them know no others; those of unknown links are passed over.
void AddLink(Links& links, const nlmsghdr& message);
void AddAddress(Links& links, const nlmsghdr& message);
void AddDefaultRoute(Links& links, const nlmsghdr& message);

}  // namespace platform
