// The machine's name servers, from the resolver's configuration. On Linux they belong to the
// machine, not to an interface. Any thread.
#pragma once

#include <istream>
#include <string>
#include <vector>

namespace platform {

// The IPv4 addresses of "nameserver" lines (resolv.conf(5)), in order.
std::vector<std::string> ReadNameServers(std::istream& configuration);

// The name servers in /etc/resolv.conf. When they are all local resolvers (127.*), the upstream
// servers of systemd-resolved, if there are any. Empty when the file cannot be read.
std::vector<std::string> MachineNameServers();

}  // namespace platform
