// Packets made byte by byte, for what sockets would not send. One thread.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "lab/file_descriptor.h"
#include "lab/network_namespace.h"

namespace lab {

using Bytes = std::vector<std::uint8_t>;

struct RawPacket {
  int family = 0;        // AF_INET or AF_INET6
  std::string source{};  // any, also none of the sender's own
  std::string destination{};
  int protocol = 0;  // IPPROTO_... of the payload
  Bytes payload{};
  int hopLimit = 64;
  Bytes options{};             // of IPv4, a multiple of four bytes
  bool isFirstOfMore = false;  // the first fragment of an IPv4 packet
};

// The header of a datagram of 8 further bytes; its checksum is not filled in.
Bytes UdpPayload(std::uint16_t sourcePort, std::uint16_t destinationPort);

// An ICMPv6 message of that type with 20 zero bytes in it; SendRaw fills its checksum in.
Bytes Icmp6Payload(std::uint8_t type, std::uint8_t code = 0);

// Sends it out of that interface as a program of that machine would, through its packet filter.
// Whether the filter took it is not told.
void SendRaw(const NetworkNamespace& place, const std::string& interfaceName,
             const RawPacket& packet);

// Hears every packet of one protocol that a machine's packet filter lets in, whoever it is for.
class RawListener {
 public:
  RawListener(const NetworkNamespace& place, int family, int protocol);

  // The packets from that address since the last call.
  int Take(const std::string& source);

 private:
  FileDescriptor socket_;
  int family_;
};

}  // namespace lab
