#include "lab/packet_capture.h"

#include <arpa/inet.h>
#include <linux/if_ether.h>
#include <linux/if_packet.h>
#include <net/if.h>
#include <netinet/ip.h>
#include <netinet/ip6.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>

namespace lab {

namespace {

constexpr std::uint16_t kMarkType = 0x88B5;  // for local experiments (IEEE 802)
constexpr int kMarkWaitMilliseconds = 10000;
constexpr int kReceiveBytes = 8 * 1024 * 1024;

[[noreturn]] void ThrowError(const char* what) {
  throw std::system_error(errno, std::generic_category(), what);
}

sockaddr_ll LinkAddress(std::uint16_t etherType, int index) {
  sockaddr_ll address{};
  address.sll_family = AF_PACKET;
  address.sll_protocol = htons(etherType);
  address.sll_ifindex = index;
  return address;
}

std::string Text(int family, const void* address) {
  char text[INET6_ADDRSTRLEN] = "";
  ::inet_ntop(family, address, text, sizeof text);
  return text;
}

int TypeAt(const std::vector<std::uint8_t>& bytes, std::size_t at, int protocol) {
  const bool hasType = protocol == IPPROTO_ICMP || protocol == IPPROTO_ICMPV6;
  return hasType && at < bytes.size() ? bytes[at] : -1;
}

Packet ReadIp4(const std::vector<std::uint8_t>& bytes) {
  iphdr header{};
  std::memcpy(&header, bytes.data(), sizeof header);
  return {.family = AF_INET,
          .protocol = header.protocol,
          .source = Text(AF_INET, &header.saddr),
          .destination = Text(AF_INET, &header.daddr),
          .type = TypeAt(bytes, header.ihl * 4u, header.protocol)};
}

Packet ReadIp6(const std::vector<std::uint8_t>& bytes) {
  ip6_hdr header{};
  std::memcpy(&header, bytes.data(), sizeof header);
  return {.family = AF_INET6,
          .protocol = header.ip6_nxt,
          .source = Text(AF_INET6, &header.ip6_src),
          .destination = Text(AF_INET6, &header.ip6_dst),
          .type = TypeAt(bytes, sizeof header, header.ip6_nxt)};
}

bool Matches(const Packet& packet, const PacketFilter& filter) {
  return (filter.protocol == 0 || filter.protocol == packet.protocol) &&
         (filter.source.empty() || filter.source == packet.source) &&
         (filter.destination.empty() || filter.destination == packet.destination) &&
         (filter.type < 0 || filter.type == packet.type);
}

}  // namespace

PacketCapture::PacketCapture(const NetworkNamespace& place, const std::string& interfaceName) {
  place.Run([&] {
    index_ = static_cast<int>(::if_nametoindex(interfaceName.c_str()));
    socket_ = FileDescriptor(::socket(AF_PACKET, SOCK_DGRAM | SOCK_CLOEXEC, htons(ETH_P_ALL)));
    const sockaddr_ll address = LinkAddress(ETH_P_ALL, index_);
    const auto* const bound = reinterpret_cast<const sockaddr*>(&address);
    if (index_ == 0 || ::bind(socket_.Get(), bound, sizeof address) != 0) {
      ThrowError(interfaceName.c_str());
    }
    ::setsockopt(socket_.Get(), SOL_SOCKET, SO_RCVBUFFORCE, &kReceiveBytes, sizeof kReceiveBytes);
  });
}

void PacketCapture::SendMark() {
  sockaddr_ll address = LinkAddress(kMarkType, index_);
  address.sll_halen = ETH_ALEN;
  std::memset(address.sll_addr, 0xff, ETH_ALEN);
  const char nothing[ETH_ZLEN] = {};
  const auto* const to = reinterpret_cast<const sockaddr*>(&address);
  if (::sendto(socket_.Get(), nothing, sizeof nothing, 0, to, sizeof address) < 0) {
    ThrowError("sendto");
  }
}

bool PacketCapture::Keep(const std::vector<std::uint8_t>& bytes, std::uint16_t etherType) {
  if (etherType == ETH_P_IP && bytes.size() >= sizeof(iphdr)) packets_.push_back(ReadIp4(bytes));
  if (etherType == ETH_P_IPV6 && bytes.size() >= sizeof(ip6_hdr)) {
    packets_.push_back(ReadIp6(bytes));
  }
  return etherType == kMarkType;
}

bool PacketCapture::ReadToMark() {
  pollfd waiting{socket_.Get(), POLLIN, 0};
  while (::poll(&waiting, 1, kMarkWaitMilliseconds) == 1) {
    std::vector<std::uint8_t> bytes(2048);
    sockaddr_ll from{};
    socklen_t fromBytes = sizeof from;
    const ssize_t size = ::recvfrom(socket_.Get(), bytes.data(), bytes.size(), 0,
                                    reinterpret_cast<sockaddr*>(&from), &fromBytes);
    if (size < 0) ThrowError("recvfrom");
    bytes.resize(std::min(bytes.size(), static_cast<std::size_t>(size)));
    if (from.sll_pkttype == PACKET_OUTGOING) continue;
    if (Keep(bytes, ntohs(from.sll_protocol))) return true;
  }
  return false;
}

std::size_t PacketCapture::Count(const PacketFilter& filter) const {
  return static_cast<std::size_t>(std::ranges::count_if(
      packets_, [&filter](const Packet& packet) { return Matches(packet, filter); }));
}

}  // namespace lab
