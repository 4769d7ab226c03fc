// The parts that the rules of all tables of the closed gate share. Value types and pure functions.
#pragma once

#include "machine_links.h"
#include "table_rules.h"

namespace quillgate::gate {

// The hook-specific parts of the rules.
struct Place {
  // Expressions that test whether an address is in a subnet of the machine.
  const char* source4;
  const char* source6;
  const char* destination4;
  const char* destination6;
  // The first rules of each direction.
  Rules firstIn{};
  Rules firstOut{};
  Rules firstForward{};
  // Drops packets with an address in a subnet whose route leads elsewhere.
  Rules notInSubnet{};
};

// DHCP as a client needs it and neighbour discovery always pass, so that the link stays alive. With
// local traffic, packets from local addresses (in) and to local addresses (out) pass; forwarded
// packets pass when both addresses are local. All others are dropped.
Rules IncomingRules(const Place& place, bool allowLocal);
Rules OutgoingRules(const Place& place, bool allowLocal);
Rules ForwardedRules(const Place& place, bool allowLocal);

// The sets that the rules use: `neighbours6`, `unconfigured`, the private ranges (`local4`,
// `local6`) and the local groups (`groups4`, `groups6`). The last four are empty without local
// traffic.
std::map<std::string, AddressSet> CommonSets(const MachineLinks& links, bool allowLocal);

// The prefixes of one IP version that are subnets.
std::vector<LinkPrefix> Subnets(const MachineLinks& links, int family);

}  // namespace quillgate::gate
