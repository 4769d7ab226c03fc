#include "ruleset.h"

#include <sys/socket.h>

#include "rule_parts.h"

namespace quillgate::gate {

namespace {

// A subnet counts on its own interface only.
constexpr SubnetTests kOwnSubnets = {
    .source4 = "iifname . ip saddr @subnets4",
    .source6 = "iifname . ip6 saddr @subnets6",
    .destination4 = "oifname . ip daddr @subnets4",
    .destination6 = "oifname . ip6 daddr @subnets6",
};

std::string Accept(const std::string& tests) {
  return tests + " accept";
}

// A subnet's address may have a route of its own that leads through a gateway, to somewhere else.
// A packet to the gateway itself has it as its next hop as well. What comes in does not show the
// way that it took, and a gateway of the other IP version is not seen here.
const Rules kThroughGateways = {
    "rt ip nexthop @gateways4 ip daddr . rt ip nexthop != @themselves4 drop",
    "rt ip6 nexthop @gateways6 ip6 daddr . rt ip6 nexthop != @themselves6 drop",
};

Rules InputRules(bool allowLocal) {
  Rules rules = {"iifname \"lo\" accept"};
  Append(rules, LinkRulesIn(kOwnSubnets));
  if (!allowLocal) return ThenDrop(rules);
  Append(rules, FurtherStops());
  Append(rules,
         {"ip saddr @local4 accept", "ip6 saddr @local6 accept", Accept(kOwnSubnets.source4),
          Accept(kOwnSubnets.source6), "ip daddr @groups4 accept", "ip6 daddr @groups6 accept"});
  return ThenDrop(rules);
}

Rules OutputRules(bool allowLocal) {
  Rules rules = {"oifname \"lo\" accept"};
  Append(rules, LinkRulesOut(kOwnSubnets));
  if (!allowLocal) return ThenDrop(rules);
  Append(rules, FurtherStops());
  Append(rules, {"ip daddr @local4 accept", "ip6 daddr @local6 accept", "ip daddr @groups4 accept",
                 "ip6 daddr @groups6 accept"});
  Append(rules, kThroughGateways);
  Append(rules, {Accept(kOwnSubnets.destination4), Accept(kOwnSubnets.destination6)});
  return ThenDrop(rules);
}

// For others only what has both of its ends on this side.
Rules ForwardRules(bool allowLocal) {
  if (!allowLocal) return ThenDrop({});
  Rules rules = FurtherStops();
  const std::string sources4[] = {"ip saddr @local4 ", std::string(kOwnSubnets.source4) + " "};
  const std::string sources6[] = {"ip6 saddr @local6 ", std::string(kOwnSubnets.source6) + " "};
  for (const std::string& source : sources4)
    Append(rules, {source + "ip daddr @local4 accept", source + "ip daddr @groups4 accept"});
  for (const std::string& source : sources6)
    Append(rules, {source + "ip6 daddr @local6 accept", source + "ip6 daddr @groups6 accept"});
  Append(rules, kThroughGateways);
  for (const std::string& source : sources4)
    rules.push_back(Accept(source + kOwnSubnets.destination4));
  for (const std::string& source : sources6)
    rules.push_back(Accept(source + kOwnSubnets.destination6));
  return ThenDrop(rules);
}

// "interface . subnet"; those of one interface may not overlap in a set.
AddressSet SubnetSet(const char* type, const MachineLinks& links, int family) {
  std::map<std::string, std::vector<NetworkPrefix>> byInterface;
  for (const LinkPrefix& link : Subnets(links, family))
    byInterface[link.interfaceName].push_back(link.prefix);
  AddressSet set{type};
  for (const auto& [name, prefixes] : byInterface) {
    for (const NetworkPrefix& prefix : WithoutContained(prefixes))
      set.elements.push_back('"' + name + "\" . " + prefix.Text());
  }
  return set;
}

void AddGateways(std::map<std::string, AddressSet>& sets, const MachineLinks& links, int family,
                 const char* version) {
  const std::string type = std::string("ipv") + version + "_addr";
  AddressSet gateways{type};
  AddressSet themselves{type + " . " + type};
  for (const NetworkPrefix& gateway : links.gateways) {
    if (gateway.family != family) continue;
    const std::string address = gateway.AddressText();
    gateways.elements.push_back(address);
    themselves.elements.push_back(address + " . " + address);
  }
  sets[std::string("gateways") + version] = gateways;
  sets[std::string("themselves") + version] = themselves;
}

}  // namespace

TableRules PacketRules(const MachineLinks& links, bool allowLocal) {
  TableRules table{.name = kTableName, .sets = CommonSets(links, allowLocal)};
  table.sets["subnets4"] = SubnetSet("ifname . ipv4_addr; flags interval", links, AF_INET);
  table.sets["subnets6"] = SubnetSet("ifname . ipv6_addr; flags interval", links, AF_INET6);
  AddGateways(table.sets, links, AF_INET, "4");
  AddGateways(table.sets, links, AF_INET6, "6");
  table.chains = {{"input", {"input", InputRules(allowLocal)}},
                  {"output", {"output", OutputRules(allowLocal)}},
                  {"forward", {"forward", ForwardRules(allowLocal)}}};
  return table;
}

bool AllowsLocal(std::string_view listing) {
  return listing.find("@local4 accept") != std::string_view::npos;
}

}  // namespace quillgate::gate
