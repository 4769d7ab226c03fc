#include "lab/raw_packet.h"

#include <netinet/ip.h>
#include <netinet/ip6.h>

#include <cstring>

#include "lab/socket_address.h"

namespace lab {

namespace {

template <class Part>
void Append(Bytes& bytes, const Part& part) {
  const auto* const start = reinterpret_cast<const std::uint8_t*>(&part);
  bytes.insert(bytes.end(), start, start + sizeof part);
}

void Append(Bytes& bytes, const Bytes& more) {
  bytes.insert(bytes.end(), more.begin(), more.end());
}

Bytes Ip4Packet(const RawPacket& packet, const void* source, const void* destination) {
  const std::size_t headerBytes = sizeof(iphdr) + packet.options.size();
  iphdr header{};
  header.version = 4;
  header.ihl = static_cast<unsigned>(headerBytes / 4) & 0x0f;
  header.tot_len = htons(static_cast<std::uint16_t>(headerBytes + packet.payload.size()));
  header.frag_off = htons(packet.isFirstOfMore ? IP_MF : 0);
  header.ttl = static_cast<std::uint8_t>(packet.hopLimit);
  header.protocol = static_cast<std::uint8_t>(packet.protocol);
  std::memcpy(&header.saddr, source, sizeof header.saddr);
  std::memcpy(&header.daddr, destination, sizeof header.daddr);
  Bytes bytes;
  Append(bytes, header);
  Append(bytes, packet.options);
  Append(bytes, packet.payload);
  return bytes;
}

Bytes Ip6Packet(const RawPacket& packet, const void* source, const void* destination) {
  ip6_hdr header{};
  header.ip6_flow = htonl(6u << 28);
  header.ip6_plen = htons(static_cast<std::uint16_t>(packet.payload.size()));
  header.ip6_nxt = static_cast<std::uint8_t>(packet.protocol);
  header.ip6_hlim = static_cast<std::uint8_t>(packet.hopLimit);
  std::memcpy(&header.ip6_src, source, sizeof header.ip6_src);
  std::memcpy(&header.ip6_dst, destination, sizeof header.ip6_dst);
  Bytes payload = packet.payload;
  if (packet.protocol == IPPROTO_ICMPV6) {
    Bytes summed;  // RFC 8200, 8.1
    Append(summed, header.ip6_src);
    Append(summed, header.ip6_dst);
    Append(summed, htonl(static_cast<std::uint32_t>(payload.size())));
    Append(summed, htonl(IPPROTO_ICMPV6));
    Append(summed, payload);
    const std::uint16_t checksum = Checksum(summed);
    std::memcpy(&payload[2], &checksum, sizeof checksum);
  }
  Bytes bytes;
  Append(bytes, header);
  Append(bytes, payload);
  return bytes;
}

}  // namespace

RawPacket UdpPacket(const std::string& source, const std::string& destination,
                    std::uint16_t sourcePort, std::uint16_t destinationPort) {
  RawPacket packet{.source = source, .destination = destination, .protocol = IPPROTO_UDP};
  for (const std::uint16_t field : {sourcePort, destinationPort, std::uint16_t{16}})
    Append(packet.payload, htons(field));
  packet.payload.resize(16);
  return packet;
}

RawPacket Icmp6Packet(const std::string& source, const std::string& destination, std::uint8_t type,
                      int hopLimit, std::uint8_t code) {
  Bytes payload = {type, code};
  payload.resize(24);
  return {.source = source,
          .destination = destination,
          .protocol = IPPROTO_ICMPV6,
          .payload = payload,
          .hopLimit = hopLimit};
}

std::uint16_t Checksum(const Bytes& bytes) {
  std::uint32_t sum = 0;
  for (std::size_t at = 0; at < bytes.size(); ++at)
    sum += static_cast<std::uint32_t>(bytes[at]) << (at % 2 == 0 ? 8 : 0);
  while (sum > 0xffff)
    sum = (sum & 0xffff) + (sum >> 16);
  return htons(static_cast<std::uint16_t>(~sum));
}

void SendRaw(const NetworkNamespace& place, const std::string& interfaceName,
             const RawPacket& packet) {
  const sockaddr_storage from = SocketAddress(packet.source);
  const sockaddr_storage to = SocketAddress(packet.destination);
  const FileDescriptor socket = place.Socket(to.ss_family, SOCK_RAW, IPPROTO_RAW);
  const int on = 1;
  ::setsockopt(socket.Get(), SOL_SOCKET, SO_BROADCAST, &on, sizeof on);
  // The tracking of connections would keep a fragment until the others came.
  ::setsockopt(socket.Get(), SOL_IP, IP_NODEFRAG, &on, sizeof on);
  if (::setsockopt(socket.Get(), SOL_SOCKET, SO_BINDTODEVICE, interfaceName.c_str(),
                   static_cast<socklen_t>(interfaceName.size())) != 0) {
    ThrowError(interfaceName);
  }
  const bool isIp4 = to.ss_family == AF_INET;
  const Bytes bytes = (isIp4 ? Ip4Packet : Ip6Packet)(packet, AddressBytes(from), AddressBytes(to));
  const socklen_t toBytes = isIp4 ? sizeof(sockaddr_in) : sizeof(sockaddr_in6);
  if (::sendto(socket.Get(), bytes.data(), bytes.size(), 0, Plain(to), toBytes) < 0 &&
      errno != EPERM) {
    ThrowError(packet.destination);
  }
}

RawListener::RawListener(const NetworkNamespace& place, const std::string& source, int protocol)
    : socket_(place.Socket(FamilyOf(source), SOCK_RAW | SOCK_NONBLOCK, protocol)),
      source_(source) {}

int RawListener::Take() {
  int count = 0;
  std::uint8_t buffer[512];
  sockaddr_storage from{};
  socklen_t fromBytes = sizeof from;
  while (::recvfrom(socket_.Get(), buffer, sizeof buffer, 0, reinterpret_cast<sockaddr*>(&from),
                    &fromBytes) >= 0) {
    if (AddressText(from.ss_family, AddressBytes(from)) == source_) ++count;
    fromBytes = sizeof from;
  }
  return count;
}

}  // namespace lab
