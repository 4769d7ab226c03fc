// Addresses of either IP version as sockets take them, and failures of system calls.
#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <cerrno>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <system_error>

namespace lab {

[[noreturn]] inline void ThrowError(const std::string& what) {
  throw std::system_error(errno, std::generic_category(), what);
}

inline int FamilyOf(const std::string& address) {
  return address.find(':') == std::string::npos ? AF_INET : AF_INET6;
}

inline std::string AddressText(int family, const void* bytes) {
  char text[INET6_ADDRSTRLEN] = "";
  ::inet_ntop(family, bytes, text, sizeof text);
  return text;
}

inline const void* AddressBytes(const sockaddr_storage& address) {
  if (address.ss_family == AF_INET) return &reinterpret_cast<const sockaddr_in&>(address).sin_addr;
  return &reinterpret_cast<const sockaddr_in6&>(address).sin6_addr;
}

// Throws std::invalid_argument for a text that is no address.
inline sockaddr_storage SocketAddress(const std::string& address, std::uint16_t port = 0) {
  sockaddr_storage storage{};
  storage.ss_family = static_cast<sa_family_t>(FamilyOf(address));
  void* const bytes = const_cast<void*>(AddressBytes(storage));
  if (::inet_pton(storage.ss_family, address.c_str(), bytes) != 1) {
    throw std::invalid_argument(address);
  }
  // The port lies at the same place in both.
  reinterpret_cast<sockaddr_in&>(storage).sin_port = htons(port);
  return storage;
}

template <class Address>
const sockaddr* Plain(const Address& address) {
  return reinterpret_cast<const sockaddr*>(&address);
}

}  // namespace lab
