// The rules of the closed gate: a chain at each place where packets pass, all of which drop what no
// rule accepts. Packets are judged one by one and by their own two ends, never by the connection
// that they belong to, so that a running download stops as well. The chains stand at the usual
// place for filters, which is behind the translation of destinations and, for what comes in, before
// that of sources: the addresses are the true ones.
//
// What comes neither to these chains nor to those for frames, and needs the administrator's rights
// to be set up: what a flow table or the hardware forwards (the driver warns of flow tables), XDP,
// and packet sockets that go past the queues.
#pragma once

#include <string_view>

#include "machine_links.h"
#include "table_rules.h"

namespace quillgate::gate {

inline constexpr const char* kTableStem = "quillgate";
inline constexpr const char* kTableName = "inet quillgate";

// The machine's own packets and those that it routes. With local traffic, or with no more than what
// keeps the link alive.
TableRules PacketRules(const MachineLinks& links, bool allowLocal);

// Whether a gate whose tables `list table` printed so lets local traffic pass.
bool AllowsLocal(std::string_view listing);

}  // namespace quillgate::gate
