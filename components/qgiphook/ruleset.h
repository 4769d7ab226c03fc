// The rules of the closed gate: one chain per hook, which drops all packets that no rule accepts.
// Packets are judged one by one by their two addresses, never by their connection, so that a
// running download stops as well. The chains have the usual priority of filters: after the
// translation of destinations and, for incoming packets, before that of sources, so that they see
// the true addresses.
//
// Not seen by these chains, nor by those for frames, and possible only with administrator rights:
// packets that a flow table or the hardware forwards (the driver warns of flow tables), XDP, and
// packet sockets that bypass the queueing layer.
#pragma once

#include <string_view>

#include "machine_links.h"
#include "table_rules.h"

namespace quillgate::gate {

inline constexpr const char* kTableStem = "quillgate";
inline constexpr const char* kTableName = "inet quillgate";

// The rules for the machine's own packets and those that it routes. Without local traffic, only
// packets that keep the link alive pass.
TableRules PacketRules(const MachineLinks& links, bool allowLocal);

// Whether a closed gate lets local traffic pass, given the output of `list table` for its tables.
bool AllowsLocal(std::string_view listing);

}  // namespace quillgate::gate
