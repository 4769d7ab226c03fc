// What a closed gate lets pass so that the link stays alive, and what only looks like it.
#include <netinet/icmp6.h>

#include <string>
#include <vector>

#include "lab/conversation.h"
#include "lab/raw_packet.h"
#include "system/leaks.h"

namespace {

using lab::Conversation;
using lab::kIp6;
using lab::NetworkLab;
using lab::Protocol;
using lab::RawPacket;
using leaks::Leaks;

// What keeps the link alive, and what looks nearly like it. Out of the host or in from the router.
struct LinkMessage {
  const char* name;
  bool outwards;
  bool passes;
  RawPacket packet;
};

RawPacket Udp(int family, const char* from, const char* to, std::uint16_t fromPort,
              std::uint16_t toPort) {
  return {.family = family,
          .source = from,
          .destination = to,
          .protocol = IPPROTO_UDP,
          .payload = lab::UdpPayload(fromPort, toPort)};
}

RawPacket Icmp6(const char* from, const char* to, std::uint8_t type, int hopLimit,
                std::uint8_t code = 0) {
  return {.family = AF_INET6,
          .source = from,
          .destination = to,
          .protocol = IPPROTO_ICMPV6,
          .payload = lab::Icmp6Payload(type, code),
          .hopLimit = hopLimit};
}

std::vector<LinkMessage> LinkMessages() {
  constexpr const char* kHost = "fe80::2";
  constexpr const char* kRouter = "fe80::1";
  RawPacket fragment = Udp(AF_INET, "198.51.100.2", "255.255.255.255", 68, 67);
  fragment.isFirstOfMore = true;
  return {
      {"DHCP request", true, true, Udp(AF_INET, "198.51.100.2", "255.255.255.255", 68, 67)},
      {"DHCP renewal", true, true, Udp(AF_INET, "198.51.100.2", "198.51.100.1", 68, 67)},
      {"DHCP through a gateway", true, false, Udp(AF_INET, "198.51.100.2", "203.0.113.10", 68, 67)},
      {"DHCP for another link", true, false, Udp(AF_INET, "198.51.100.2", "192.168.50.2", 68, 67)},
      {"DHCP in fragments", true, false, fragment},
      {"from 68 to elsewhere", true, false, Udp(AF_INET, "198.51.100.2", "198.51.100.1", 68, 53)},
      {"to 67 from elsewhere", true, false, Udp(AF_INET, "198.51.100.2", "198.51.100.1", 5, 67)},
      {"DHCP answer", false, true, Udp(AF_INET, "198.51.100.1", "198.51.100.2", 67, 68)},
      {"DHCP answer to all", false, true, Udp(AF_INET, "203.0.113.10", "255.255.255.255", 67, 68)},
      {"DHCP answer from afar", false, false, Udp(AF_INET, "203.0.113.10", "198.51.100.2", 67, 68)},
      {"to 68 from elsewhere", false, false, Udp(AF_INET, "198.51.100.1", "198.51.100.2", 53, 68)},
      {"DHCPv6 request", true, true, Udp(AF_INET6, kHost, "ff02::1:2", 546, 547)},
      {"DHCPv6 to one server", true, true, Udp(AF_INET6, kHost, kRouter, 546, 547)},
      {"DHCPv6 from a global address", true, false,
       Udp(AF_INET6, "2001:db8:1::2", "ff02::1:2", 546, 547)},
      {"DHCPv6 to a global address", true, false, Udp(AF_INET6, kHost, "2001:db8:1::1", 546, 547)},
      {"DHCPv6 answer", false, true, Udp(AF_INET6, kRouter, kHost, 547, 546)},
      {"DHCPv6 answer from afar", false, false,
       Udp(AF_INET6, "2001:db8:1::1", "2001:db8:1::2", 547, 546)},
      {"router solicitation", true, true, Icmp6(kHost, "ff02::2", ND_ROUTER_SOLICIT, 255)},
      {"router solicitation to one", true, false, Icmp6(kHost, kRouter, ND_ROUTER_SOLICIT, 255)},
      {"forged hop limit", true, false, Icmp6(kHost, "ff02::2", ND_ROUTER_SOLICIT, 254)},
      {"neighbour solicitation", true, true,
       Icmp6(kHost, "ff02::1:ff00:1", ND_NEIGHBOR_SOLICIT, 255)},
      {"neighbour solicitation to afar", true, false,
       Icmp6("2001:db8:1::2", "2001:db8:ffff::10", ND_NEIGHBOR_SOLICIT, 255)},
      {"neighbour solicitation from afar", false, false,
       Icmp6("2001:db8:ffff::10", "2001:db8:1::2", ND_NEIGHBOR_SOLICIT, 255)},
      {"neighbour advertisement in the subnet", true, true,
       Icmp6("2001:db8:1::2", "2001:db8:1::1", ND_NEIGHBOR_ADVERT, 255)},
      {"neighbour solicitation with a code", true, false,
       Icmp6(kHost, "ff02::1:ff00:1", ND_NEIGHBOR_SOLICIT, 255, 1)},
      {"neighbour advertisement", true, true, Icmp6(kHost, kRouter, ND_NEIGHBOR_ADVERT, 255)},
      {"router advertisement, out", true, false, Icmp6(kHost, "ff02::1", ND_ROUTER_ADVERT, 255)},
      {"redirect, out", true, false, Icmp6(kHost, kRouter, ND_REDIRECT, 255)},
      {"echo with hop limit 255", true, false, Icmp6(kHost, kRouter, ICMP6_ECHO_REQUEST, 255)},
      {"router advertisement", false, true, Icmp6(kRouter, kHost, ND_ROUTER_ADVERT, 255)},
      {"router advertisement from afar", false, false,
       Icmp6("2001:db8:1::1", kHost, ND_ROUTER_ADVERT, 255)},
      {"router advertisement, forged", false, false, Icmp6(kRouter, kHost, ND_ROUTER_ADVERT, 64)},
      {"neighbour solicitation, in", false, true, Icmp6(kRouter, kHost, ND_NEIGHBOR_SOLICIT, 255)},
      {"redirect, in", false, false, Icmp6(kRouter, kHost, ND_REDIRECT, 255)},
      {"router solicitation, in", false, false, Icmp6(kRouter, kHost, ND_ROUTER_SOLICIT, 255)},
  };
}

class LinkTraffic : public Leaks {
 protected:
  bool Arrives(const LinkMessage& message) {
    const RawPacket& packet = message.packet;
    lab::RawListener atHost(lab_->Host(), packet.family, packet.protocol);
    lab_->Forget();
    if (message.outwards) {
      lab::SendRaw(lab_->Host(), NetworkLab::kHostOutside, packet);
    } else {
      lab::SendRaw(lab_->Internet(), "eth0", packet);
    }
    lab_->Settle();
    if (!message.outwards) return atHost.Take(packet.source) > 0;
    const bool isIcmp = packet.protocol == IPPROTO_ICMPV6;
    return lab_->AtInternet().Count({.protocol = packet.protocol,
                                     .source = packet.source,
                                     .destination = packet.destination,
                                     .type = isIcmp ? packet.payload[0] : -1}) > 0;
  }
};

TEST_F(LinkTraffic, KeepsTheLinkAliveAndNothingElse) {
  // The neighbours know each other already, as on a link in use.
  const lab::End host{&lab_->Host(), "2001:db8:1::2"};
  const lab::End router{&lab_->Internet(), "2001:db8:1::1"};
  ASSERT_TRUE(Conversation(Protocol::kUdp, AF_INET6, host, router).Establish());
  lab_->Host().Shell("ip neigh replace fe80::1 lladdr ff:ff:ff:ff:ff:ff dev wan0");
  lab_->Internet().Shell(
      "ip neigh replace fe80::2 lladdr $("
      "ip neigh show 2001:db8:1::2 dev eth0 | sed 's/.*lladdr \\([^ ]*\\).*/\\1/')"
      " dev eth0");
  const std::vector<LinkMessage> messages = LinkMessages();
  for (const LinkMessage& message : messages)
    EXPECT_TRUE(Arrives(message)) << message.name;
  ASSERT_TRUE(driver_->Close(false));
  for (const LinkMessage& message : messages) {
    EXPECT_EQ(Arrives(message), message.passes) << message.name;
  }
}

TEST_F(LinkTraffic, NeighboursFindTheHostBehindAClosedGate) {
  ASSERT_TRUE(driver_->Close(false));
  lab_->Internet().Shell("ip neigh flush dev eth0");
  Conversation ping(Protocol::kIcmp, AF_INET6, {&lab_->Internet(), kIp6.router},
                    {&lab_->Host(), kIp6.hostOutside});
  ping.Begin();
  for (int attempt = 0; attempt < 50; ++attempt)
    lab_->Settle();
  EXPECT_THAT(lab_->Internet().Shell("ip -6 neigh show 2001:db8:1::2"),
              testing::HasSubstr("REACHABLE"));
  EXPECT_EQ(ping.TakeBack(), 0);
}

}  // namespace
