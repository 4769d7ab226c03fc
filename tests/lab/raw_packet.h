// Packets made byte by byte, for what sockets would not send. One thread.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "lab/network_namespace.h"

namespace lab {

using Bytes = std::vector<std::uint8_t>;

// Of the IP version that its addresses are of.
struct RawPacket {
  std::string source{};  // any, also none of the sender's own
  std::string destination{};
  int protocol = 0;  // IPPROTO_... of the payload
  Bytes payload{};
  int hopLimit = 64;
  Bytes options{};             // of IPv4, a multiple of four bytes
  bool isFirstOfMore = false;  // the first fragment of an IPv4 packet
};

// A datagram of 8 bytes; its checksum is not filled in.
RawPacket UdpPacket(const std::string& source, const std::string& destination,
                    std::uint16_t sourcePort = 5000, std::uint16_t destinationPort = 5001);

// A message of that type with 20 zero bytes in it; SendRaw fills its checksum in.
RawPacket Icmp6Packet(const std::string& source, const std::string& destination, std::uint8_t type,
                      int hopLimit = 255, std::uint8_t code = 0);

// The Internet's (RFC 1071), in the order of the network.
std::uint16_t Checksum(const Bytes& bytes);

// Sends it out of that interface as a program of that machine would, through its packet filter.
// Whether the filter took it is not told.
void SendRaw(const NetworkNamespace& place, const std::string& interfaceName,
             const RawPacket& packet);

// Receives every packet of one protocol from one address that a machine's packet filter lets in,
// whoever it is for.
class RawListener {
 public:
  RawListener(const NetworkNamespace& place, const std::string& source, int protocol);

  // The packets since the last call.
  int Take();

 private:
  FileDescriptor socket_;
  std::string source_;
};

}  // namespace lab
