// What a closed gate lets pass so that the link stays alive, and what only looks like it.
#include <netinet/icmp6.h>

#include <string>
#include <vector>

#include "lab/conversation.h"
#include "system/leaks.h"

namespace {

using lab::Conversation;
using lab::kIp6;
using lab::NetworkLab;
using lab::Protocol;
using lab::RawPacket;

enum class Way { kOut, kIn };  // out of the host, or in from the router

struct LinkMessage {
  const char* name;
  Way way;
  bool passes;
  RawPacket packet;
};

std::vector<LinkMessage> LinkMessages() {
  using lab::Icmp6Packet;
  using lab::UdpPacket;
  using enum Way;
  const auto& [client4, inside4, host4, router4, server4] = lab::kIp4;
  const auto& [client6, inside6, global, globalRouter, server6] = kIp6;
  constexpr const char* kAll4 = "255.255.255.255";
  constexpr const char* kHost = "fe80::2";
  constexpr const char* kRouter = "fe80::1";
  constexpr const char* kServers = "ff02::1:2";
  constexpr const char* kNode = "ff02::1:ff00:1";
  constexpr std::uint8_t kRs = ND_ROUTER_SOLICIT;
  constexpr std::uint8_t kRa = ND_ROUTER_ADVERT;
  constexpr std::uint8_t kNs = ND_NEIGHBOR_SOLICIT;
  constexpr std::uint8_t kNa = ND_NEIGHBOR_ADVERT;
  RawPacket fragment = UdpPacket(host4, kAll4, 68, 67);
  fragment.isFirstOfMore = true;
  return {
      {"DHCP request", kOut, true, UdpPacket(host4, kAll4, 68, 67)},
      {"DHCP renewal", kOut, true, UdpPacket(host4, router4, 68, 67)},
      {"DHCP through a gateway", kOut, false, UdpPacket(host4, server4, 68, 67)},
      {"DHCP for another link", kOut, false, UdpPacket(host4, client4, 68, 67)},
      {"DHCP in fragments", kOut, false, fragment},
      {"from 68 to elsewhere", kOut, false, UdpPacket(host4, router4, 68, 53)},
      {"to 67 from elsewhere", kOut, false, UdpPacket(host4, router4, 5, 67)},
      {"DHCP answer", kIn, true, UdpPacket(router4, host4, 67, 68)},
      {"DHCP answer to all", kIn, true, UdpPacket(server4, kAll4, 67, 68)},
      {"DHCP answer from afar", kIn, false, UdpPacket(server4, host4, 67, 68)},
      {"to 68 from elsewhere", kIn, false, UdpPacket(router4, host4, 53, 68)},
      {"DHCPv6 request", kOut, true, UdpPacket(kHost, kServers, 546, 547)},
      {"DHCPv6 to one server", kOut, true, UdpPacket(kHost, kRouter, 546, 547)},
      {"DHCPv6 from a global address", kOut, false, UdpPacket(global, kServers, 546, 547)},
      {"DHCPv6 to a global address", kOut, false, UdpPacket(kHost, globalRouter, 546, 547)},
      {"DHCPv6 answer", kIn, true, UdpPacket(kRouter, kHost, 547, 546)},
      {"DHCPv6 answer from afar", kIn, false, UdpPacket(globalRouter, global, 547, 546)},
      {"router solicitation", kOut, true, Icmp6Packet(kHost, "ff02::2", kRs)},
      {"router solicitation to one", kOut, false, Icmp6Packet(kHost, kRouter, kRs)},
      {"forged hop limit", kOut, false, Icmp6Packet(kHost, "ff02::2", kRs, 254)},
      {"neighbour solicitation", kOut, true, Icmp6Packet(kHost, kNode, kNs)},
      {"neighbour solicitation to afar", kOut, false, Icmp6Packet(global, server6, kNs)},
      {"neighbour solicitation from afar", kIn, false, Icmp6Packet(server6, global, kNs)},
      {"neighbour advertisement in the subnet", kOut, true, Icmp6Packet(global, globalRouter, kNa)},
      {"neighbour solicitation with a code", kOut, false, Icmp6Packet(kHost, kNode, kNs, 255, 1)},
      {"neighbour advertisement", kOut, true, Icmp6Packet(kHost, kRouter, kNa)},
      {"router advertisement, out", kOut, false, Icmp6Packet(kHost, "ff02::1", kRa)},
      {"redirect, out", kOut, false, Icmp6Packet(kHost, kRouter, ND_REDIRECT)},
      {"echo with hop limit 255", kOut, false, Icmp6Packet(kHost, kRouter, ICMP6_ECHO_REQUEST)},
      {"router advertisement", kIn, true, Icmp6Packet(kRouter, kHost, kRa)},
      {"router advertisement from afar", kIn, false, Icmp6Packet(globalRouter, kHost, kRa)},
      {"router advertisement, forged", kIn, false, Icmp6Packet(kRouter, kHost, kRa, 64)},
      {"neighbour solicitation, in", kIn, true, Icmp6Packet(kRouter, kHost, kNs)},
      {"redirect, in", kIn, false, Icmp6Packet(kRouter, kHost, ND_REDIRECT)},
      {"router solicitation, in", kIn, false, Icmp6Packet(kRouter, kHost, kRs)},
  };
}

class LinkTraffic : public leaks::Leaks {
 protected:
  static bool Arrives(const LinkMessage& message) {
    const RawPacket& packet = message.packet;
    lab::RawListener atHost(lab_->Host(), packet.source, packet.protocol);
    const bool out = message.way == Way::kOut;
    const bool isIcmp = packet.protocol == IPPROTO_ICMPV6;
    const std::size_t arrivals =
        Arrivals(out ? lab_->Host() : lab_->Internet(), out ? NetworkLab::kHostOutside : "eth0",
                 packet, lab_->AtInternet(),
                 {.protocol = packet.protocol,
                  .source = packet.source,
                  .destination = packet.destination,
                  .type = isIcmp ? packet.payload[0] : -1});
    return out ? arrivals > 0 : atHost.Take() > 0;
  }
};

TEST_F(LinkTraffic, KeepsTheLinkAliveAndNothingElse) {
  // The neighbours know each other already, as on a link in use.
  ASSERT_TRUE(Conversation(Protocol::kUdp, {&lab_->Host(), kIp6.hostOutside},
                           {&lab_->Internet(), kIp6.router})
                  .Establish());
  lab_->Host().Shell("ip neigh replace fe80::1 lladdr ff:ff:ff:ff:ff:ff dev wan0");
  lab_->Internet().Shell(
      "ip neigh replace fe80::2 lladdr $("
      "ip neigh show 2001:db8:1::2 dev eth0 | sed 's/.*lladdr \\([^ ]*\\).*/\\1/')"
      " dev eth0");
  const std::vector<LinkMessage> messages = LinkMessages();
  for (const LinkMessage& message : messages)
    EXPECT_TRUE(Arrives(message)) << message.name;
  ASSERT_TRUE(driver_->Close(false));
  for (const LinkMessage& message : messages)
    EXPECT_EQ(Arrives(message), message.passes) << message.name;
}

TEST_F(LinkTraffic, NeighboursFindTheHostBehindAClosedGate) {
  ASSERT_TRUE(driver_->Close(false));
  lab_->Internet().Shell("ip neigh flush dev eth0");
  Conversation ping(Protocol::kIcmp, {&lab_->Internet(), kIp6.router},
                    {&lab_->Host(), kIp6.hostOutside});
  ping.Begin();
  for (int attempt = 0; attempt < 50; ++attempt)
    lab_->Settle();
  EXPECT_THAT(lab_->Internet().Shell("ip -6 neigh show 2001:db8:1::2"),
              testing::HasSubstr("REACHABLE"));
  EXPECT_EQ(ping.TakeBack(), 0);
}

}  // namespace
