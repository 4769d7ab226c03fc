// The rules of the closed gate for frames that do not reach the machine's own stack: frames that a
// bridge forwards, and frames of machines on a macvlan, which pass through its parent only. Parents
// cannot be recognized, since their children may be in other namespaces, so the rules are attached
// to every interface. There the machine's own packets are judged a second time, by the same two
// addresses.
//
// Frames that are not IP pass: ARP, EAPOL, PPPoE and the like keep links alive, and IP encapsulated
// in them needs a machine outside that decapsulates it. Stacked VLAN tags do not pass. Guests have
// no DHCP and no neighbour discovery across a closed bridge; they retry when it opens. Not seen
// here are packets between guests of one macvlan and, on a parent without an address of its own,
// packets from port 67 to port 68.
#pragma once

#include <vector>

#include "machine_links.h"
#include "table_rules.h"

namespace quillgate::gate {

inline constexpr const char* kBridgeTable = "bridge quillgate";
inline constexpr const char* kDeviceTable = "netdev quillgate";

// The hooks that a kernel may lack: bridge, ingress, egress (since Linux 5.16).
struct FrameHooks {
  bool bridge = false;
  bool ingress = false;
  bool egress = false;
};

// The tables for the hooks that the kernel has.
std::vector<TableRules> FrameRules(const MachineLinks& links, bool allowLocal,
                                   const FrameHooks& hooks);

}  // namespace quillgate::gate
