// The machine's name servers, from the resolver's configuration. Linux keeps them for the machine,
// not for each interface.
#pragma once

#include <istream>
#include <string>
#include <vector>

namespace platform {

// The IPv4 addresses of "nameserver" lines (resolv.conf(5)), in order.
std::vector<std::string> ReadNameServers(std::istream& configuration);

// Those of /etc/resolv.conf; where that names only a resolver of this machine, those which the
// resolver itself asks. Empty when they cannot be read.
std::vector<std::string> MachineNameServers();

}  // namespace platform
