#include "lab/packet_capture.h"

#include <linux/if_ether.h>
#include <linux/if_packet.h>
#include <net/if.h>
#include <poll.h>
#include <sys/ioctl.h>

#include <algorithm>
#include <cstring>

#include "lab/socket_address.h"

namespace lab {

namespace {

constexpr std::uint16_t kMarkType = 0x88B5;  // for local experiments (IEEE 802)
constexpr int kMarkWaitMilliseconds = 10000;
constexpr int kReceiveBytes = 8 * 1024 * 1024;

sockaddr_ll LinkAddress(std::uint16_t etherType, int index) {
  sockaddr_ll address{};
  address.sll_family = AF_PACKET;
  address.sll_protocol = htons(etherType);
  address.sll_ifindex = index;
  return address;
}

// By the offsets in IP's own header.
Packet ReadPacket(int family, const std::uint8_t* bytes) {
  const bool isIp4 = family == AF_INET;
  const int protocol = bytes[isIp4 ? 9 : 6];
  const bool hasType = protocol == IPPROTO_ICMP || protocol == IPPROTO_ICMPV6;
  return {.protocol = protocol,
          .source = AddressText(family, bytes + (isIp4 ? 12 : 8)),
          .destination = AddressText(family, bytes + (isIp4 ? 16 : 24)),
          .type = hasType ? bytes[isIp4 ? (bytes[0] & 0x0f) * 4 : 40] : -1};
}

}  // namespace

PacketCapture::PacketCapture(const NetworkNamespace& place, const std::string& interfaceName)
    : socket_(place.Socket(AF_PACKET, SOCK_DGRAM, htons(ETH_P_ALL))) {
  ifreq request{};
  interfaceName.copy(request.ifr_name, IFNAMSIZ - 1);
  if (::ioctl(socket_.Get(), SIOCGIFINDEX, &request) != 0) ThrowError(interfaceName);
  index_ = request.ifr_ifindex;
  const sockaddr_ll address = LinkAddress(ETH_P_ALL, index_);
  if (::bind(socket_.Get(), Plain(address), sizeof address) != 0) ThrowError(interfaceName);
  ::setsockopt(socket_.Get(), SOL_SOCKET, SO_RCVBUFFORCE, &kReceiveBytes, sizeof kReceiveBytes);
}

void PacketCapture::SendMark() {
  sockaddr_ll address = LinkAddress(kMarkType, index_);
  address.sll_halen = ETH_ALEN;
  std::memset(address.sll_addr, 0xff, ETH_ALEN);
  const char nothing[ETH_ZLEN] = {};
  if (::sendto(socket_.Get(), nothing, sizeof nothing, 0, Plain(address), sizeof address) < 0) {
    ThrowError("sendto");
  }
}

bool PacketCapture::ReadToMark() {
  pollfd waiting{socket_.Get(), POLLIN, 0};
  while (::poll(&waiting, 1, kMarkWaitMilliseconds) == 1) {
    std::uint8_t bytes[2048] = {};
    sockaddr_ll from{};
    socklen_t fromBytes = sizeof from;
    if (::recvfrom(socket_.Get(), bytes, sizeof bytes, 0, reinterpret_cast<sockaddr*>(&from),
                   &fromBytes) < 0) {
      ThrowError("recvfrom");
    }
    if (from.sll_pkttype == PACKET_OUTGOING) continue;
    const std::uint16_t etherType = ntohs(from.sll_protocol);
    if (etherType == kMarkType) return true;
    if (etherType == ETH_P_IP) packets_.push_back(ReadPacket(AF_INET, bytes));
    if (etherType == ETH_P_IPV6) packets_.push_back(ReadPacket(AF_INET6, bytes));
  }
  return false;
}

std::size_t PacketCapture::Count(const Packet& wanted) const {
  return static_cast<std::size_t>(std::ranges::count_if(packets_, [&](const Packet& packet) {
    return (wanted.protocol == 0 || wanted.protocol == packet.protocol) &&
           (wanted.source.empty() || wanted.source == packet.source) &&
           (wanted.destination.empty() || wanted.destination == packet.destination) &&
           (wanted.type < 0 || wanted.type == packet.type);
  }));
}

}  // namespace lab
