// Defines local traffic: addresses that packets reach without crossing the Internet.
#pragma once

#include <vector>

#include "network_prefix.h"

namespace quillgate::gate {

// The private ranges (RFC 1918, RFC 4193) and the link-local ones (RFC 3927, RFC 4291), on any
// link. The range that providers share among customers (100.64.0.0/10) is not included.
std::vector<NetworkPrefix> PrivateRanges(int family);

// Whether the prefix that an interface is connected to can be one subnet. A private prefix always
// can. Any other prefix that is shorter than those of real links (a route for everything, the
// halves that tunnels use, automatic tunnels such as 2002::/16) would make much of the Internet
// local.
bool IsSubnet(const NetworkPrefix& connected);

// Multicast groups whose packets stay on the link or within the site. For IPv4: the link's own
// block (224.0.0.0/24, RFC 5771), the local scope (239.255.0.0/16, RFC 2365) and the limited
// broadcast. For IPv6: the scopes 1 to 5, interface to site (RFC 7346), with every flag that is
// defined.
std::vector<NetworkPrefix> LocalGroups(int family);

// The source and destination addresses of neighbour discovery (RFC 4861) before anything is
// configured: the unspecified and the link-local addresses, all nodes, all routers, and the
// solicited-node groups.
std::vector<NetworkPrefix> DiscoveryRanges();

}  // namespace quillgate::gate
