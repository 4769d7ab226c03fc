// What the rules of every table of the closed gate have in common: their sets, and the rules for
// what keeps a link alive. Values.
#pragma once

#include "machine_links.h"
#include "table_rules.h"

namespace quillgate::gate {

// How a table asks whether an address is in a subnet of the machine.
struct SubnetTests {
  const char* source4;
  const char* source6;
  const char* destination4;
  const char* destination6;
};

// What may come in and go out so that the link stays alive: DHCP as a client needs it, and
// neighbour discovery.
Rules LinkRulesIn(const SubnetTests& subnets);
Rules LinkRulesOut(const SubnetTests& subnets);

// A packet that names further stops, in a routing header or a source route, does not end where its
// destination address says: these drop it.
Rules FurtherStops();

// `rules`, the other rules behind them.
void Append(Rules& rules, const Rules& others);

// The policy of a chain comes into force a moment after its rules do, so a rule says it too.
Rules ThenDrop(Rules rules);

// The sets that the rules name: `neighbours6`, `unconfigured`, and with local traffic the private
// ranges (`local4`, `local6`) and the local groups (`groups4`, `groups6`), which are empty else.
std::map<std::string, AddressSet> CommonSets(const MachineLinks& links, bool allowLocal);

// Of one IP version, without those that are no subnet.
std::vector<LinkPrefix> Subnets(const MachineLinks& links, int family);

}  // namespace quillgate::gate
