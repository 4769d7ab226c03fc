// What the rules of every table of the closed gate have in common. Values.
#pragma once

#include "machine_links.h"
#include "table_rules.h"

namespace quillgate::gate {

// Where rules stand, as far as that makes a difference to them.
struct Place {
  // How to ask whether an address is in a subnet of the machine.
  const char* source4;
  const char* source6;
  const char* destination4;
  const char* destination6;
  // What comes before everything else in each direction.
  Rules firstIn{};
  Rules firstOut{};
  Rules firstForward{};
  // Drops what has a subnet's address and goes elsewhere.
  Rules notInSubnet{};
};

// The link stays alive in any case: DHCP as a client needs it, and neighbour discovery. With local
// traffic, what comes from there and what goes there; forwarded, what has both of its ends there.
// All else is dropped.
Rules IncomingRules(const Place& place, bool allowLocal);
Rules OutgoingRules(const Place& place, bool allowLocal);
Rules ForwardedRules(const Place& place, bool allowLocal);

// The sets that the rules name: `neighbours6`, `unconfigured`, and with local traffic the private
// ranges (`local4`, `local6`) and the local groups (`groups4`, `groups6`), which are empty else.
std::map<std::string, AddressSet> CommonSets(const MachineLinks& links, bool allowLocal);

// Of one IP version, without those that are no subnet.
std::vector<LinkPrefix> Subnets(const MachineLinks& links, int family);

}  // namespace quillgate::gate
