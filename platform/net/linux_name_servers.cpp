#include "platform/net/linux_name_servers.h"

#include <arpa/inet.h>

#include <algorithm>
#include <fstream>
#include <sstream>

namespace platform {

std::vector<std::string> ReadNameServers(std::istream& configuration) {
  std::vector<std::string> servers;
  for (std::string line; std::getline(configuration, line);) {
    std::istringstream words(line);
    std::string keyword;
    std::string address;
    in_addr parsed{};
    if (words >> keyword >> address && keyword == "nameserver" &&
        ::inet_pton(AF_INET, address.c_str(), &parsed) == 1) {
      servers.push_back(address);
    }
  }
  return servers;
}

std::vector<std::string> MachineNameServers() {
  std::ifstream file("/etc/resolv.conf");
  std::vector<std::string> servers = ReadNameServers(file);
  const auto onThisMachine = [](const std::string& each) { return each.starts_with("127."); };
  if (!servers.empty() && std::ranges::all_of(servers, onThisMachine)) {
    std::ifstream upstream("/run/systemd/resolve/resolv.conf");
    std::vector<std::string> upstreamServers = ReadNameServers(upstream);
    if (!upstreamServers.empty()) return upstreamServers;
  }
  return servers;
}

}  // namespace platform
