#include "rule_parts.h"

#include <sys/socket.h>

#include <algorithm>
#include <set>

#include "local_networks.h"

namespace quillgate::gate {

namespace {

constexpr const char* kDhcpIn = "ip frag-off & 0x3fff == 0 udp sport 67 udp dport 68 accept";
constexpr const char* kDhcpOut = "ip frag-off & 0x3fff == 0 udp sport 68 udp dport 67 accept";
constexpr const char* kDhcp6In = "ip6 nexthdr udp udp sport 547 udp dport 546 accept";
constexpr const char* kDhcp6Out = "ip6 nexthdr udp udp sport 546 udp dport 547 accept";

// As RFC 4861 has it: between addresses of the link, no extension headers and so no fragments,
// code 0, and the hop limit that only a neighbour's packet still has.
std::string Discovery(const char* type, const char* onlyFor = "") {
  return std::string(onlyFor) +
         "ip6 saddr @neighbours6 ip6 daddr @neighbours6 ip6 nexthdr icmpv6 ip6 hoplimit 255"
         " icmpv6 code 0 icmpv6 type " +
         type + " accept";
}

std::string Test(const char* test, const char* rest) {
  return std::string(test) + " " + rest;
}

// Interfaces that have no IPv4 address yet, but for what they gave themselves (RFC 3927).
std::vector<std::string> Unconfigured(const MachineLinks& links) {
  std::set<std::string> names(links.interfaces.begin(), links.interfaces.end());
  const std::uint8_t linkLocal[] = {169, 254, 0, 0};
  const NetworkPrefix selfGiven = MakePrefix(AF_INET, linkLocal, 16);
  for (const LinkPrefix& link : links.prefixes) {
    if (link.prefix.family == AF_INET && !selfGiven.Contains(link.prefix)) {
      names.erase(link.interfaceName);
    }
  }
  return {names.begin(), names.end()};
}

std::vector<NetworkPrefix> Neighbours(const MachineLinks& links) {
  std::vector<NetworkPrefix> prefixes = DiscoveryRanges();
  for (const LinkPrefix& link : Subnets(links, AF_INET6))
    prefixes.push_back(link.prefix);
  return WithoutContained(std::move(prefixes));
}

}  // namespace

// A client hears the answer from its server or from a relay, both on its link. Before it has an
// address nobody knows what is on the link: then it hears everybody. What is broadcast comes from
// the link in any case.
Rules LinkRulesIn(const SubnetTests& subnets) {
  return {
      Test("ip daddr 255.255.255.255", kDhcpIn),
      Test("iifname @unconfigured", kDhcpIn),
      Test(subnets.source4, kDhcpIn),
      Test("ip6 saddr fe80::/10 ip6 daddr fe80::/10", kDhcp6In),
      Discovery("nd-router-advert", "ip6 saddr fe80::/10 "),
      Discovery("nd-neighbor-solicit"),
      Discovery("nd-neighbor-advert"),
  };
}

// A server behind a relay is not asked in person: the client asks everybody later.
Rules LinkRulesOut(const SubnetTests& subnets) {
  return {
      Test("ip daddr 255.255.255.255", kDhcpOut),
      Test(subnets.destination4, kDhcpOut),
      Test("ip6 saddr fe80::/10 ip6 daddr { fe80::/10, ff02::1:2 }", kDhcp6Out),
      Discovery("nd-router-solicit", "ip6 daddr ff02::2 "),
      Discovery("nd-neighbor-solicit"),
      Discovery("nd-neighbor-advert"),
  };
}

Rules FurtherStops() {
  return {
      "ip option lsrr exists drop",
      "ip option ssrr exists drop",
      "exthdr rt exists drop",
  };
}

void Append(Rules& rules, const Rules& others) {
  rules.insert(rules.end(), others.begin(), others.end());
}

Rules ThenDrop(Rules rules) {
  rules.push_back("drop");
  return rules;
}

std::map<std::string, AddressSet> CommonSets(const MachineLinks& links, bool allowLocal) {
  const auto ifAllowed = [allowLocal](std::vector<NetworkPrefix> prefixes) {
    return allowLocal ? prefixes : std::vector<NetworkPrefix>();
  };
  AddressSet unconfigured{"ifname"};
  for (const std::string& name : Unconfigured(links))
    unconfigured.elements.push_back('"' + name + '"');
  return {
      {"unconfigured", unconfigured},
      {"neighbours6", SetOf("ipv6_addr; flags interval", Neighbours(links))},
      {"local4", SetOf("ipv4_addr; flags interval", ifAllowed(PrivateRanges(AF_INET)))},
      {"local6", SetOf("ipv6_addr; flags interval", ifAllowed(PrivateRanges(AF_INET6)))},
      {"groups4", SetOf("ipv4_addr; flags interval", ifAllowed(LocalGroups(AF_INET)))},
      {"groups6", SetOf("ipv6_addr; flags interval", ifAllowed(LocalGroups(AF_INET6)))},
  };
}

std::vector<LinkPrefix> Subnets(const MachineLinks& links, int family) {
  std::vector<LinkPrefix> subnets;
  std::ranges::copy_if(links.prefixes, std::back_inserter(subnets), [family](const auto& link) {
    return link.prefix.family == family && IsSubnet(link.prefix);
  });
  return subnets;
}

}  // namespace quillgate::gate
