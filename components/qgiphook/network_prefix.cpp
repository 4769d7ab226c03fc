#include "network_prefix.h"

#include <arpa/inet.h>

#include <algorithm>
#include <cstring>

namespace quillgate::gate {

namespace {

std::size_t AddressBytes(int family) {
  return family == AF_INET ? 4 : 16;
}

}  // namespace

NetworkPrefix MakePrefix(int family, const void* address, unsigned length) {
  NetworkPrefix prefix{.family = family, .length = length};
  std::memcpy(prefix.address.data(), address, AddressBytes(family));
  for (unsigned byte = 0; byte < prefix.address.size(); ++byte) {
    const unsigned bits = std::clamp(static_cast<int>(length) - static_cast<int>(byte * 8), 0, 8);
    prefix.address[byte] &= static_cast<std::uint8_t>(0xff00u >> bits);
  }
  return prefix;
}

bool NetworkPrefix::Contains(const NetworkPrefix& other) const {
  return family == other.family && length <= other.length &&
         MakePrefix(family, other.address.data(), length).address == address;
}

std::string NetworkPrefix::AddressText() const {
  char text[INET6_ADDRSTRLEN] = "";
  ::inet_ntop(family, address.data(), text, sizeof text);
  return text;
}

std::string NetworkPrefix::Text() const {
  return AddressText() + "/" + std::to_string(length);
}

std::vector<NetworkPrefix> WithoutContained(std::vector<NetworkPrefix> prefixes) {
  // Sorted by address and then by length, a prefix follows the prefix that contains it.
  std::ranges::sort(prefixes);
  std::vector<NetworkPrefix> kept;
  for (const NetworkPrefix& prefix : prefixes) {
    if (kept.empty() || !kept.back().Contains(prefix)) kept.push_back(prefix);
  }
  return kept;
}

}  // namespace quillgate::gate
