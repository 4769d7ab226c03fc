#include "local_networks.h"

#include <arpa/inet.h>

#include <algorithm>
#include <iterator>

namespace quillgate::gate {

namespace {

struct Range {
  int family;
  const char* address;
  unsigned length;
};

constexpr Range kUnicast[] = {
    {AF_INET, "10.0.0.0", 8},     {AF_INET, "172.16.0.0", 12}, {AF_INET, "192.168.0.0", 16},
    {AF_INET, "169.254.0.0", 16}, {AF_INET6, "fc00::", 7},     {AF_INET6, "fe80::", 10},
};

constexpr Range kGroups4[] = {
    {AF_INET, "224.0.0.0", 24}, {AF_INET, "239.255.0.0", 16}, {AF_INET, "255.255.255.255", 32}};

constexpr Range kDiscovery[] = {{AF_INET6, "::", 128},
                                {AF_INET6, "fe80::", 10},
                                {AF_INET6, "ff02::1", 128},
                                {AF_INET6, "ff02::2", 128},
                                {AF_INET6, "ff02::1:ff00:0", 104}};

constexpr unsigned kShortestSubnet4 = 16;
constexpr unsigned kShortestSubnet6 = 64;

NetworkPrefix PrefixOf(const Range& range) {
  in6_addr address{};
  ::inet_pton(range.family, range.address, &address);
  return MakePrefix(range.family, &address, range.length);
}

// ff<flags><scope>::/16. The flags are 0 (permanent), 1 (transient), 3 (also based on a unicast
// prefix) or 7 (also with an embedded rendezvous point).
std::vector<NetworkPrefix> LocalGroups6() {
  constexpr unsigned kFlags[] = {0, 1, 3, 7};
  constexpr unsigned kInterfaceScope = 1;
  constexpr unsigned kSiteScope = 5;
  std::vector<NetworkPrefix> groups;
  for (const unsigned flags : kFlags) {
    for (unsigned scope = kInterfaceScope; scope <= kSiteScope; ++scope) {
      const std::uint8_t address[16] = {0xff, static_cast<std::uint8_t>(flags << 4 | scope)};
      groups.push_back(MakePrefix(AF_INET6, address, 16));
    }
  }
  return groups;
}

}  // namespace

std::vector<NetworkPrefix> PrivateRanges(int family) {
  std::vector<NetworkPrefix> prefixes;
  for (const Range& range : kUnicast) {
    if (range.family == family) prefixes.push_back(PrefixOf(range));
  }
  return prefixes;
}

bool IsSubnet(const NetworkPrefix& connected) {
  const unsigned shortest = connected.family == AF_INET ? kShortestSubnet4 : kShortestSubnet6;
  return connected.length >= shortest ||
         std::ranges::any_of(kUnicast, [&connected](const Range& range) {
           return PrefixOf(range).Contains(connected);
         });
}

std::vector<NetworkPrefix> DiscoveryRanges() {
  std::vector<NetworkPrefix> prefixes;
  std::ranges::transform(kDiscovery, std::back_inserter(prefixes), PrefixOf);
  return prefixes;
}

std::vector<NetworkPrefix> LocalGroups(int family) {
  if (family == AF_INET6) return LocalGroups6();
  std::vector<NetworkPrefix> groups;
  std::ranges::transform(kGroups4, std::back_inserter(groups), PrefixOf);
  return groups;
}

}  // namespace quillgate::gate
