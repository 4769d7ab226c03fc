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

// As RFC 4861 requires: between addresses of the link, no extension headers and so no fragments,
// code 0, and the hop limit 255, which only a neighbour's packet can have.
std::string Discovery(const char* type, const char* onlyFor = "") {
  return std::string(onlyFor) +
         "ip6 saddr @neighbours6 ip6 daddr @neighbours6 ip6 nexthdr icmpv6 ip6 hoplimit 255"
         " icmpv6 code 0 icmpv6 type " +
         type + " accept";
}

std::string Test(const char* test, const char* rest) {
  return std::string(test) + " " + rest;
}

std::string Accept(const std::string& tests) {
  return tests + " accept";
}

void Append(Rules& rules, const Rules& others) {
  rules.insert(rules.end(), others.begin(), others.end());
}

// The policy of a chain takes effect a moment after its rules do, so the last rule drops, too.
Rules ThenDrop(Rules rules) {
  rules.emplace_back("drop");
  return rules;
}

// A packet with a routing header or a source route does not end at its destination address.
const Rules kFurtherStops = {
    "ip option lsrr exists drop",
    "ip option ssrr exists drop",
    "exthdr rt exists drop",
};

// A client receives the reply from its server or from a relay, both on its link. Before it has an
// address the subnets of the link are unknown, so replies from anywhere are accepted. A broadcast
// comes from the link in any case.
Rules LinkRulesIn(const Place& place) {
  return {
      Test("ip daddr 255.255.255.255", kDhcpIn),
      Test("iifname @unconfigured", kDhcpIn),
      Test(place.source4, kDhcpIn),
      Test("ip6 saddr fe80::/10 ip6 daddr fe80::/10", kDhcp6In),
      Discovery("nd-router-advert", "ip6 saddr fe80::/10 "),
      Discovery("nd-neighbor-solicit"),
      Discovery("nd-neighbor-advert"),
  };
}

// A unicast to a server behind a relay is dropped: the client falls back to broadcast.
Rules LinkRulesOut(const Place& place) {
  return {
      Test("ip daddr 255.255.255.255", kDhcpOut),
      Test(place.destination4, kDhcpOut),
      Test("ip6 saddr fe80::/10 ip6 daddr { fe80::/10, ff02::1:2 }", kDhcp6Out),
      Discovery("nd-router-solicit", "ip6 daddr ff02::2 "),
      Discovery("nd-neighbor-solicit"),
      Discovery("nd-neighbor-advert"),
  };
}

// Interfaces without an IPv4 address, except self-assigned ones (RFC 3927).
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

Rules IncomingRules(const Place& place, bool allowLocal) {
  Rules rules = place.firstIn;
  Append(rules, LinkRulesIn(place));
  if (!allowLocal) return ThenDrop(rules);
  Append(rules, kFurtherStops);
  Append(rules, {"ip saddr @local4 accept", "ip6 saddr @local6 accept", Accept(place.source4),
                 Accept(place.source6), "ip daddr @groups4 accept", "ip6 daddr @groups6 accept"});
  return ThenDrop(rules);
}

Rules OutgoingRules(const Place& place, bool allowLocal) {
  Rules rules = place.firstOut;
  Append(rules, LinkRulesOut(place));
  if (!allowLocal) return ThenDrop(rules);
  Append(rules, kFurtherStops);
  Append(rules, {"ip daddr @local4 accept", "ip6 daddr @local6 accept", "ip daddr @groups4 accept",
                 "ip6 daddr @groups6 accept"});
  Append(rules, place.notInSubnet);
  Append(rules, {Accept(place.destination4), Accept(place.destination6)});
  return ThenDrop(rules);
}

Rules ForwardedRules(const Place& place, bool allowLocal) {
  Rules rules = place.firstForward;
  if (!allowLocal) return ThenDrop(rules);
  Append(rules, kFurtherStops);
  const std::string sources4[] = {"ip saddr @local4 ", std::string(place.source4) + " "};
  const std::string sources6[] = {"ip6 saddr @local6 ", std::string(place.source6) + " "};
  for (const std::string& source : sources4)
    Append(rules, {source + "ip daddr @local4 accept", source + "ip daddr @groups4 accept"});
  for (const std::string& source : sources6)
    Append(rules, {source + "ip6 daddr @local6 accept", source + "ip6 daddr @groups6 accept"});
  Append(rules, place.notInSubnet);
  for (const std::string& source : sources4)
    rules.push_back(Accept(source + place.destination4));
  for (const std::string& source : sources6)
    rules.push_back(Accept(source + place.destination6));
  return ThenDrop(rules);
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
