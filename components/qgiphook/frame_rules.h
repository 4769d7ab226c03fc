// The rules of the closed gate for what does not come to the machine's own stack: frames that a
// bridge passes on, and those of machines on a macvlan, which pass through its parent only. The
// parents cannot be told, for their children may be in other namespaces, so the rules stand at
// every interface. There the machine's own packets are judged once more, by the same two ends.
//
// Frames that are not IP pass: ARP, EAPOL, PPPoE and the like keep links alive, and what is wrapped
// in those needs an end outside that unwraps it. Stacked tags of virtual networks do not pass.
// Guests have no DHCP and no neighbour discovery across a closed bridge; they ask again when it
// opens. Guests of one macvlan among themselves are not seen here, nor is what its parent, when it
// has no address itself, hears from port 67 for port 68.
#pragma once

#include <vector>

#include "machine_links.h"
#include "table_rules.h"

namespace quillgate::gate {

inline constexpr const char* kBridgeTable = "bridge quillgate";
inline constexpr const char* kDeviceTable = "netdev quillgate";

// The places that a kernel may lack: bridges, and on the way out (since Linux 5.16).
struct FrameHooks {
  bool bridge = false;
  bool ingress = false;
  bool egress = false;
};

// The tables for the places that there are.
std::vector<TableRules> FrameRules(const MachineLinks& links, bool allowLocal,
                                   const FrameHooks& hooks);

}  // namespace quillgate::gate
