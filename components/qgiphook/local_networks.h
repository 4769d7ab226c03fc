// What counts as local traffic: addresses that packets reach without crossing the Internet.
#pragma once

#include <vector>

#include "network_prefix.h"

namespace quillgate::gate {

// Unicast: the private ranges (RFC 1918, RFC 4193), the link-local ones (RFC 3927, RFC 4291), and
// of the prefixes that the machine is connected to, whatever their addresses, those that can be a
// subnet. The addresses that providers share among customers (100.64.0.0/10) are not local.
std::vector<NetworkPrefix> LocalUnicast(int family, const std::vector<NetworkPrefix>& connected);

// Groups whose packets stay on the link or within the site: for IPv4 the link's own block
// (224.0.0.0/24, RFC 5771), the local scope (239.255.0.0/16, RFC 2365) and the limited broadcast;
// for IPv6 the scopes 1 to 5, interface to site (RFC 7346), with every flag that is defined.
std::vector<NetworkPrefix> LocalGroups(int family);

}  // namespace quillgate::gate
