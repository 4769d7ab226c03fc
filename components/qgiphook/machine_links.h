// The machine's interfaces, addresses and gateways, as the kernel tells them. Read by any thread,
// in the network namespace of which it is.
#pragma once

#include <string>
#include <vector>

#include "network_prefix.h"

namespace quillgate::gate {

// Addresses that are reached directly through an interface.
struct LinkPrefix {
  std::string interfaceName;
  NetworkPrefix prefix;
  auto operator<=>(const LinkPrefix&) const = default;
};

// In order and each once, so that two readings of the same state are equal. The loopback interface
// is left out, for it is judged by its name, and so are those whose names have no place in a rule
// (quotation marks, backslashes, asterisks): nothing passes there.
struct MachineLinks {
  std::vector<std::string> interfaces{};  // up or not
  // One for each address of an interface that is up; on a point-to-point link the other end.
  std::vector<LinkPrefix> prefixes{};
  // The next hops of all routes in all tables, each as the prefix of one address.
  std::vector<NetworkPrefix> gateways{};
  bool operator==(const MachineLinks&) const = default;
};

// Throws std::system_error.
MachineLinks ReadMachineLinks();

}  // namespace quillgate::gate
