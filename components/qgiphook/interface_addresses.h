// The addresses of the machine's interfaces, as the kernel tells them.
#pragma once

#include <vector>

#include "network_prefix.h"

namespace quillgate::gate {

// One prefix for each address of an interface that is up, the loopback interface excepted: the
// addresses that are reached directly through it. On a point-to-point link that is the other end.
// Throws std::system_error.
std::vector<NetworkPrefix> ConnectedPrefixes(int family);

}  // namespace quillgate::gate
