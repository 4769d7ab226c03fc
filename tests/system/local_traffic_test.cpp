// Local traffic past a closed gate: all of it when it is allowed, none when it is not.
#include <netinet/icmp6.h>

#include <string>

#include "lab/conversation.h"
#include "lab/raw_packet.h"
#include "system/leaks.h"

namespace {

using lab::Addresses;
using lab::Conversation;
using lab::kIp4;
using lab::kIp6;
using lab::NetworkLab;
using lab::PacketFilter;
using lab::Protocol;
using lab::RawPacket;
using leaks::Leaks;

constexpr Protocol kProtocols[] = {Protocol::kTcp, Protocol::kUdp, Protocol::kIcmp};

// Datagrams to a destination, out of the host's inner interface, whatever the routes say. The
// subnets of the outer one are not local there, nor are those with a short prefix, nor what lies
// behind a gateway (44.1.0.88 and fd50::2).
struct Destination {
  const char* address;
  bool isLocal;
};

constexpr Destination kDestinations4[] = {
    {"192.168.50.2", true},    {"192.168.50.255", true}, {"192.168.7.7", true},
    {"192.169.0.1", false},    {"10.255.1.2", true},     {"11.0.0.1", false},
    {"172.16.0.1", true},      {"172.31.255.1", true},   {"172.32.0.1", false},
    {"169.254.7.7", true},     {"169.253.7.7", false},   {"198.51.100.77", false},
    {"198.51.101.77", false},  {"100.64.0.1", false},    {"203.0.113.10", false},
    {"8.8.8.8", false},        {"224.0.0.251", true},    {"224.0.1.1", false},
    {"239.255.255.250", true}, {"239.192.0.1", false},   {"232.1.1.1", false},
    {"255.255.255.255", true}, {"44.1.0.77", true},      {"44.1.0.88", true},
    {"44.1.200.7", false},     {"45.1.0.77", false},
};
constexpr Destination kDestinations6[] = {
    {"fd50::2", true},         {"fc00::1", true},           {"fd12:3456::1", true},
    {"fe00::1", false},        {"fe80::77", true},          {"fec0::1", false},
    {"2001:db8:1::77", false}, {"2001:db8:2::1", false},    {"2001:db8:ffff::10", false},
    {"2606:4700::1", false},   {"64:ff9b::808:808", false}, {"ff02::fb", true},
    {"ff05::c", true},         {"ff12::1", true},           {"ff35::1", true},
    {"ff08::1", false},        {"ff0e::1", false},          {"ff3e::1", false},
    {"2400:1::77", true},      {"2400:1::200", false},      {"2400:2:0:1::77", false},
};

constexpr const char* kSubnets =
    "ip addr replace 44.1.0.1/16 dev home0; ip addr replace 45.0.0.1/15 dev home0;"
    "for subnet in 1::1/64 2::1/63; do ip addr replace 2400:$subnet dev home0 nodad; done;"
    "ip route replace 44.1.200.0/24 via 44.1.0.88; ip -6 route replace 2400:1::200 via fd50::2";

class LocalTraffic : public Leaks {
 protected:
  void SetUp() override {
    Leaks::SetUp();
    if (IsSkipped()) return;
    // Everything is on this link, and everybody is everybody's neighbour on it.
    std::string neighbours = "set -e; ip -6 route replace default dev home0 metric 4000;";
    for (const auto& destination : kDestinations4)
      neighbours += Neighbour(destination);
    for (const auto& destination : kDestinations6)
      neighbours += Neighbour(destination);
    lab_->Host().Shell(neighbours + kSubnets);
  }
  void TearDown() override {
    if (!IsSkipped()) {
      lab_->Host().Shell("ip -6 route del default dev home0; ip neigh flush nud permanent");
    }
    Leaks::TearDown();
  }

  // Groups have no neighbours, and the client is one already.
  static std::string Neighbour(const Destination& destination) {
    const std::string address = destination.address;
    const bool isGroup = address.find(':') != std::string::npos ? address.starts_with("ff")
                                                                : std::stoi(address) >= 224;
    if (isGroup || address == kIp4.client || address == kIp6.client) return "";
    return "ip neigh replace " + address + " lladdr ff:ff:ff:ff:ff:ff dev home0;";
  }

  std::size_t Arrivals(const char* source, const char* destination, int family) {
    lab_->Forget();
    lab::SendRaw(lab_->Host(), NetworkLab::kHostInside,
                 {.family = family,
                  .source = source,
                  .destination = destination,
                  .protocol = IPPROTO_UDP,
                  .payload = lab::UdpPayload(5000, 5001)});
    lab_->Settle();
    return lab_->AtClient().Count({.protocol = IPPROTO_UDP, .destination = destination});
  }

  void ExpectArrivals(const char* state, bool local, bool others) {
    for (const auto& [address, isLocal] : kDestinations4) {
      EXPECT_EQ(Arrivals(kIp4.hostInside, address, AF_INET), (isLocal ? local : others) ? 1u : 0u)
          << address << " " << state;
    }
    for (const auto& [address, isLocal] : kDestinations6) {
      EXPECT_EQ(Arrivals(kIp6.hostInside, address, AF_INET6), (isLocal ? local : others) ? 1u : 0u)
          << address << " " << state;
    }
  }
};

TEST_F(LocalTraffic, PassesExactlyWhenItIsLocalAndAllowed) {
  ExpectArrivals("open", true, true);
  ASSERT_TRUE(driver_->Close(true));
  ExpectArrivals("closed, local allowed", true, false);
  ASSERT_TRUE(driver_->Close(false));
  ExpectArrivals("closed", false, false);
}

TEST_F(LocalTraffic, WithFurtherStopsInItsHeaderIsNotLocal) {
  RawPacket sourceRouted{.family = AF_INET,
                         .source = kIp4.hostInside,
                         .destination = kIp4.client,
                         .protocol = IPPROTO_UDP,
                         .payload = lab::UdpPayload(5000, 5001),
                         .options = {131, 7, 4, 203, 0, 113, 10, 0}};
  RawPacket routed{.family = AF_INET6,
                   .source = kIp6.hostInside,
                   .destination = kIp6.client,
                   .protocol = IPPROTO_ROUTING,
                   .payload = lab::Bytes(24)};
  routed.payload[0] = IPPROTO_NONE;
  routed.payload[1] = 2;  // 16 further bytes: one address
  const auto arrivals = [&](const RawPacket& packet) {
    lab_->Forget();
    lab::SendRaw(lab_->Host(), NetworkLab::kHostInside, packet);
    lab_->Settle();
    return lab_->AtClient().Count({.protocol = packet.protocol, .destination = packet.destination});
  };
  EXPECT_EQ(arrivals(sourceRouted), 1u);
  EXPECT_EQ(arrivals(routed), 1u);
  ASSERT_TRUE(driver_->Close(true));
  EXPECT_EQ(arrivals(sourceRouted), 0u);
  EXPECT_EQ(arrivals(routed), 0u);
  EXPECT_EQ(Arrivals(kIp4.hostInside, kIp4.client, AF_INET), 1u);
}

TEST_F(LocalTraffic, FlowsInEveryDirectionWhenAllowed) {
  for (const Addresses* ip : {&kIp4, &kIp6}) {
    const lab::End client{&lab_->Client(), ip->client};
    const lab::End host{&lab_->Host(), ip->hostInside};
    const lab::End router{&lab_->Internet(), ip->router};
    for (const Protocol protocol : kProtocols) {
      const auto works = [&](const lab::End& from, const lab::End& to) {
        return Conversation(protocol, ip->family, from, to).Establish();
      };
      ASSERT_TRUE(driver_->Close(true));
      EXPECT_TRUE(works(host, client));
      EXPECT_TRUE(works(client, host));
      // The router's address is in a subnet of the host: what is forwarded has two local ends.
      EXPECT_TRUE(works(client, router));
      ASSERT_TRUE(driver_->OpenGate());
    }
  }
}

TEST_F(LocalTraffic, IsSilentWhenItIsBlockedToo) {
  ASSERT_TRUE(driver_->Close(false));
  for (const Addresses* ip : {&kIp4, &kIp6}) {
    for (const Protocol protocol : kProtocols) {
      lab::RawListener atHost(lab_->Host(), ip->family,
                              Conversation(protocol, ip->family, {&lab_->Host(), ip->hostInside},
                                           {&lab_->Client(), ip->client})
                                  .IpProtocol());
      Conversation fromHost(protocol, ip->family, {&lab_->Host(), ip->hostInside},
                            {&lab_->Client(), ip->client});
      Conversation toHost(protocol, ip->family, {&lab_->Client(), ip->client},
                          {&lab_->Host(), ip->hostInside});
      Conversation across(protocol, ip->family, {&lab_->Client(), ip->client},
                          {&lab_->Internet(), ip->router});
      lab_->Forget();
      fromHost.Begin();
      toHost.Begin();
      across.Begin();
      lab_->Settle();
      const PacketFilter any{.protocol = fromHost.IpProtocol()};
      // Neighbour discovery is the one thing that is heard.
      const std::size_t discovery = ip->family == AF_INET6 && protocol == Protocol::kIcmp
                                        ? lab_->AtClient().Count({.type = ND_NEIGHBOR_SOLICIT}) +
                                              lab_->AtClient().Count({.type = ND_NEIGHBOR_ADVERT})
                                        : 0;
      EXPECT_EQ(lab_->AtClient().Count(any), discovery);
      EXPECT_EQ(lab_->AtInternet().Count({.source = ip->client}), 0u);
      if (discovery == 0) {
        EXPECT_EQ(atHost.Take(ip->client), 0);
      }
    }
  }
}

TEST_F(LocalTraffic, OfTheMachineWithItselfAlwaysPasses) {
  ASSERT_TRUE(driver_->Close(false));
  for (const char* address : {"127.0.0.1", "192.168.50.1", "198.51.100.2"}) {
    const lab::End self{&lab_->Host(), address};
    EXPECT_TRUE(Conversation(Protocol::kTcp, AF_INET, self, self).Establish()) << address;
  }
  const lab::End self{&lab_->Host(), "::1"};
  EXPECT_TRUE(Conversation(Protocol::kUdp, AF_INET6, self, self).Establish());
}

}  // namespace
