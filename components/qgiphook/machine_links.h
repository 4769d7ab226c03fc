// The machine's interfaces, addresses and gateways, as the kernel reports them for the network
// namespace of the calling thread. Any thread.
#pragma once

#include <string>
#include <vector>

#include "network_prefix.h"

namespace quillgate::gate {

// A prefix whose addresses are reached directly through an interface.
struct LinkPrefix {
  std::string interfaceName;
  NetworkPrefix prefix;
  auto operator<=>(const LinkPrefix&) const = default;
};

// Sorted and without duplicates, so that two readings of the same state are equal. The loopback
// interface is left out: the rules judge it by its name. Interfaces whose names cannot be written
// in a rule (quotation marks, backslashes, asterisks) are left out, too: nothing passes there.
struct MachineLinks {
  std::vector<std::string> interfaces{};  // up or not
  // One for each address of an interface that is up. On a point-to-point link it is the other end's
  // address.
  std::vector<LinkPrefix> prefixes{};
  // The next hops of all routes in all tables, each as a prefix of full length.
  std::vector<NetworkPrefix> gateways{};
  bool operator==(const MachineLinks&) const = default;
};

// Throws std::system_error.
MachineLinks ReadMachineLinks();

}  // namespace quillgate::gate
