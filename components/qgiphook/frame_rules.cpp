#include "frame_rules.h"

#include <sys/socket.h>

#include <cctype>

#include "rule_parts.h"

namespace quillgate::gate {

namespace {

// The kernel removes one VLAN tag by itself. A frame that still has one has several, or comes from
// a guest that adds tags itself: its contents cannot be judged.
const Rules kOtherFrames = {"meta protocol { 8021q, 8021ad } drop",
                            "meta protocol != { ip, ip6 } accept"};

// The ports of a bridge have the bridge's subnet, so subnets are not bound to interfaces here.
// Where a frame is forwarded to is not judged.
const Place kFrames = {
    .source4 = "ip saddr @subnets4",
    .source6 = "ip6 saddr @subnets6",
    .destination4 = "ip daddr @subnets4",
    .destination6 = "ip6 daddr @subnets6",
    .firstIn = kOtherFrames,
    .firstOut = kOtherFrames,
    .firstForward = kOtherFrames,
};

AddressSet SubnetSet(const char* type, const MachineLinks& links, int family) {
  std::vector<NetworkPrefix> prefixes;
  for (const LinkPrefix& link : Subnets(links, family))
    prefixes.push_back(link.prefix);
  return SetOf(type, WithoutContained(std::move(prefixes)));
}

TableRules TableWithSets(const char* name, const MachineLinks& links, bool allowLocal) {
  TableRules table{.name = name, .sets = CommonSets(links, allowLocal)};
  table.sets["subnets4"] = SubnetSet("ipv4_addr; flags interval", links, AF_INET);
  table.sets["subnets6"] = SubnetSet("ipv6_addr; flags interval", links, AF_INET6);
  return table;
}

// Interface names may have characters that chain names cannot have: those are written as
// hexadecimal codes.
std::string ChainName(const std::string& hook, const std::string& interfaceName) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string name = hook + "_";
  for (const char each : interfaceName) {
    const auto byte = static_cast<unsigned char>(each);
    if (std::isalnum(byte) != 0 || each == '-' || each == '.') {
      name += each;
    } else {
      name += {'_', kDigits[byte >> 4], kDigits[byte & 15]};
    }
  }
  return name;
}

// One chain per interface, so that the other chains are not touched when an interface comes or
// goes.
void AddDirection(TableRules& table, const MachineLinks& links, const char* hook,
                  const char* rulesName, Rules rules) {
  table.chains[rulesName] = {.rules = std::move(rules)};
  for (const std::string& name : links.interfaces) {
    table.chains[ChainName(hook, name)] = {.hook = std::string(hook) + " device \"" + name + "\"",
                                           .rules = {std::string("goto ") + rulesName, "drop"}};
  }
}

}  // namespace

std::vector<TableRules> FrameRules(const MachineLinks& links, bool allowLocal,
                                   const FrameHooks& hooks) {
  std::vector<TableRules> tables;
  if (hooks.bridge) {
    tables.push_back(TableWithSets(kBridgeTable, links, allowLocal));
    tables.back().chains["forward"] = {"forward", ForwardedRules(kFrames, allowLocal)};
  }
  if (!hooks.ingress && !hooks.egress) return tables;
  tables.push_back(TableWithSets(kDeviceTable, links, allowLocal));
  if (hooks.ingress) {
    AddDirection(tables.back(), links, "ingress", "incoming", IncomingRules(kFrames, allowLocal));
  }
  if (hooks.egress) {
    AddDirection(tables.back(), links, "egress", "outgoing", OutgoingRules(kFrames, allowLocal));
  }
  return tables;
}

}  // namespace quillgate::gate
