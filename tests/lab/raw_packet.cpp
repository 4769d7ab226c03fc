#include "lab/raw_packet.h"

#include <arpa/inet.h>
#include <netinet/icmp6.h>
#include <netinet/ip.h>
#include <netinet/ip6.h>
#include <sys/socket.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <system_error>

#include "lab/socket_address.h"

namespace lab {

namespace {

template <class Part>
void Append(Bytes& bytes, const Part& part) {
  const auto* const start = reinterpret_cast<const std::uint8_t*>(&part);
  bytes.insert(bytes.end(), start, start + sizeof part);
}

template <class Address>
Address ReadAddress(int family, const std::string& text) {
  Address address{};
  if (::inet_pton(family, text.c_str(), &address) != 1) throw std::invalid_argument(text);
  return address;
}

std::uint16_t Checksum(const Bytes& bytes) {
  std::uint32_t sum = 0;
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    sum += static_cast<std::uint32_t>(bytes[at]) << (at % 2 == 0 ? 8 : 0);
  }
  while (sum > 0xffff)
    sum = (sum & 0xffff) + (sum >> 16);
  return htons(static_cast<std::uint16_t>(~sum));
}

Bytes Ip4Packet(const RawPacket& packet) {
  const std::size_t headerBytes = sizeof(iphdr) + packet.options.size();
  iphdr header{};
  header.version = 4;
  header.ihl = static_cast<unsigned>(headerBytes / 4) & 0x0f;
  header.tot_len = htons(static_cast<std::uint16_t>(headerBytes + packet.payload.size()));
  header.frag_off = htons(packet.isFirstOfMore ? IP_MF : 0);
  header.ttl = static_cast<std::uint8_t>(packet.hopLimit);
  header.protocol = static_cast<std::uint8_t>(packet.protocol);
  header.saddr = ReadAddress<in_addr>(AF_INET, packet.source).s_addr;
  header.daddr = ReadAddress<in_addr>(AF_INET, packet.destination).s_addr;
  Bytes bytes;
  Append(bytes, header);
  bytes.insert(bytes.end(), packet.options.begin(), packet.options.end());
  bytes.insert(bytes.end(), packet.payload.begin(), packet.payload.end());
  return bytes;
}

Bytes Ip6Packet(const RawPacket& packet) {
  ip6_hdr header{};
  header.ip6_flow = htonl(6u << 28);
  header.ip6_plen = htons(static_cast<std::uint16_t>(packet.payload.size()));
  header.ip6_nxt = static_cast<std::uint8_t>(packet.protocol);
  header.ip6_hlim = static_cast<std::uint8_t>(packet.hopLimit);
  header.ip6_src = ReadAddress<in6_addr>(AF_INET6, packet.source);
  header.ip6_dst = ReadAddress<in6_addr>(AF_INET6, packet.destination);
  Bytes payload = packet.payload;
  if (packet.protocol == IPPROTO_ICMPV6) {
    Bytes summed;  // RFC 8200, 8.1
    Append(summed, header.ip6_src);
    Append(summed, header.ip6_dst);
    Append(summed, htonl(static_cast<std::uint32_t>(payload.size())));
    Append(summed, htonl(IPPROTO_ICMPV6));
    summed.insert(summed.end(), payload.begin(), payload.end());
    const std::uint16_t checksum = Checksum(summed);
    std::memcpy(&payload[2], &checksum, sizeof checksum);
  }
  Bytes bytes;
  Append(bytes, header);
  bytes.insert(bytes.end(), payload.begin(), payload.end());
  return bytes;
}

FileDescriptor RawSocket(int family, int protocol) {
  FileDescriptor socket(::socket(family, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, protocol));
  if (!socket.IsValid()) throw std::system_error(errno, std::generic_category(), "socket");
  return socket;
}

void Send(int socket, const RawPacket& packet) {
  const bool isIp4 = packet.family == AF_INET;
  const sockaddr_storage to = SocketAddress(packet.family, packet.destination);
  const Bytes bytes = isIp4 ? Ip4Packet(packet) : Ip6Packet(packet);
  const ssize_t sent = ::sendto(socket, bytes.data(), bytes.size(), 0, Plain(to),
                                isIp4 ? sizeof(sockaddr_in) : sizeof(sockaddr_in6));
  if (sent < 0 && errno != EPERM) {
    throw std::system_error(errno, std::generic_category(), packet.destination);
  }
}

}  // namespace

Bytes UdpPayload(std::uint16_t sourcePort, std::uint16_t destinationPort) {
  Bytes bytes;
  Append(bytes, htons(sourcePort));
  Append(bytes, htons(destinationPort));
  Append(bytes, htons(16));
  bytes.resize(16);
  return bytes;
}

Bytes Icmp6Payload(std::uint8_t type, std::uint8_t code) {
  Bytes bytes(24);
  bytes[0] = type;
  bytes[1] = code;
  return bytes;
}

void SendRaw(const NetworkNamespace& place, const std::string& interfaceName,
             const RawPacket& packet) {
  place.Run([&] {
    const FileDescriptor socket = RawSocket(packet.family, IPPROTO_RAW);
    const int on = 1;
    ::setsockopt(socket.Get(), SOL_SOCKET, SO_BROADCAST, &on, sizeof on);
    // The tracking of connections would keep a fragment until the others came.
    ::setsockopt(socket.Get(), SOL_IP, IP_NODEFRAG, &on, sizeof on);
    if (::setsockopt(socket.Get(), SOL_SOCKET, SO_BINDTODEVICE, interfaceName.c_str(),
                     static_cast<socklen_t>(interfaceName.size())) != 0) {
      throw std::system_error(errno, std::generic_category(), interfaceName);
    }
    Send(socket.Get(), packet);
  });
}

RawListener::RawListener(const NetworkNamespace& place, int family, int protocol)
    : family_(family) {
  place.Run([&] { socket_ = RawSocket(family, protocol); });
}

int RawListener::Take(const std::string& source) {
  int count = 0;
  for (;;) {
    std::uint8_t buffer[512];
    sockaddr_storage from{};
    socklen_t fromBytes = sizeof from;
    const ssize_t bytes = ::recvfrom(socket_.Get(), buffer, sizeof buffer, 0,
                                     reinterpret_cast<sockaddr*>(&from), &fromBytes);
    if (bytes < 0) return count;
    char text[INET6_ADDRSTRLEN] = "";
    const void* const address =
        family_ == AF_INET
            ? static_cast<const void*>(&reinterpret_cast<const sockaddr_in&>(from).sin_addr)
            : static_cast<const void*>(&reinterpret_cast<const sockaddr_in6&>(from).sin6_addr);
    ::inet_ntop(family_, address, text, sizeof text);
    if (source == text) ++count;
  }
}

}  // namespace lab
