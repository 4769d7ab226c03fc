#include "ruleset.h"

#include <sys/socket.h>

#include "rule_parts.h"

namespace quillgate::gate {

namespace {

// A subnet is local only on its own interface. Some of its addresses may be routed through a
// gateway to somewhere else; only packets to the gateway itself have the gateway as next hop and
// are local. Incoming packets do not show the path that they took, and a gateway of the other IP
// version is not recognized here.
const Place kMachine = {
    .source4 = "iifname . ip saddr @subnets4",
    .source6 = "iifname . ip6 saddr @subnets6",
    .destination4 = "oifname . ip daddr @subnets4",
    .destination6 = "oifname . ip6 daddr @subnets6",
    .firstIn = {"iifname \"lo\" accept"},
    .firstOut = {"oifname \"lo\" accept"},
    .notInSubnet = {"rt ip nexthop @gateways4 ip daddr . rt ip nexthop != @themselves4 drop",
                    "rt ip6 nexthop @gateways6 ip6 daddr . rt ip6 nexthop != @themselves6 drop"},
};

// Elements are "interface . subnet". In a set, the subnets of one interface must not overlap.
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
  table.chains = {{"input", {"input", IncomingRules(kMachine, allowLocal)}},
                  {"output", {"output", OutgoingRules(kMachine, allowLocal)}},
                  {"forward", {"forward", ForwardedRules(kMachine, allowLocal)}}};
  return table;
}

bool AllowsLocal(std::string_view listing) {
  return listing.find("@local4 accept") != std::string_view::npos;
}

}  // namespace quillgate::gate
