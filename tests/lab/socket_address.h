// Addresses of either IP version as sockets take them.
#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <cstdint>
#include <stdexcept>
#include <string>

namespace lab {

// Throws std::invalid_argument for a text that is no address of that family.
inline sockaddr_storage SocketAddress(int family, const std::string& address,
                                      std::uint16_t port = 0) {
  sockaddr_storage storage{};
  storage.ss_family = static_cast<sa_family_t>(family);
  auto& ip4 = reinterpret_cast<sockaddr_in&>(storage);
  auto& ip6 = reinterpret_cast<sockaddr_in6&>(storage);
  void* const bytes = family == AF_INET ? static_cast<void*>(&ip4.sin_addr) : &ip6.sin6_addr;
  if (::inet_pton(family, address.c_str(), bytes) != 1) throw std::invalid_argument(address);
  ip4.sin_port = htons(port);  // the port lies at the same place in both
  return storage;
}

inline const sockaddr* Plain(const sockaddr_storage& address) {
  return reinterpret_cast<const sockaddr*>(&address);
}

}  // namespace lab
