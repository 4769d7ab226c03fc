// A range of IPv4 or IPv6 addresses that share their first bits.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace quillgate::gate {

struct NetworkPrefix {
  int family = 0;                          // AF_INET or AF_INET6
  std::array<std::uint8_t, 16> address{};  // network byte order; the first 4 for IPv4
  unsigned length = 0;                     // in bits

  bool Contains(const NetworkPrefix& other) const;
  std::string AddressText() const;  // "192.168.0.0"
  std::string Text() const;         // "192.168.0.0/16"
  auto operator<=>(const NetworkPrefix&) const = default;
};

// The prefix of the first `length` bits of an address; all other bits are cleared.
NetworkPrefix MakePrefix(int family, const void* address, unsigned length);

// Removes duplicates and prefixes that another one contains, so that the ranges do not overlap.
std::vector<NetworkPrefix> WithoutContained(std::vector<NetworkPrefix> prefixes);

}  // namespace quillgate::gate
