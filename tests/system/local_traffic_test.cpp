// Local traffic past a closed gate: all of it when it is allowed, none when it is not.
#include <netinet/icmp6.h>

#include <string>

#include "lab/conversation.h"
#include "system/leaks.h"

namespace {

using lab::Addresses;
using lab::Conversation;
using lab::kIp4;
using lab::kIp6;
using lab::NetworkLab;
using lab::Protocol;
using lab::RawPacket;

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

class LocalTraffic : public leaks::Leaks {
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

  static std::size_t ArrivalsAtClient(const RawPacket& packet) {
    return Arrivals(lab_->Host(), NetworkLab::kHostInside, packet, lab_->AtClient(),
                    {.protocol = packet.protocol, .destination = packet.destination});
  }

  static void ExpectArrivals(const char* state, bool local, bool others) {
    const auto expectEach = [&](const char* source, const auto& destinations) {
      for (const auto& [address, isLocal] : destinations) {
        EXPECT_EQ(ArrivalsAtClient(lab::UdpPacket(source, address)),
                  (isLocal ? local : others) ? 1u : 0u)
            << address << " " << state;
      }
    };
    expectEach(kIp4.hostInside, kDestinations4);
    expectEach(kIp6.hostInside, kDestinations6);
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
  RawPacket sourceRouted = lab::UdpPacket(kIp4.hostInside, kIp4.client);
  sourceRouted.options = {131, 7, 4, 203, 0, 113, 10, 0};
  RawPacket routed{.source = kIp6.hostInside,
                   .destination = kIp6.client,
                   .protocol = IPPROTO_ROUTING,
                   .payload = {IPPROTO_NONE, 2}};  // 16 further bytes: one address
  routed.payload.resize(24);
  for (const RawPacket& packet : {sourceRouted, routed}) {
    EXPECT_EQ(ArrivalsAtClient(packet), 1u);
    ASSERT_TRUE(driver_->Close(true));
    EXPECT_EQ(ArrivalsAtClient(packet), 0u);
    EXPECT_EQ(ArrivalsAtClient(lab::UdpPacket(kIp4.hostInside, kIp4.client)), 1u);
    ASSERT_TRUE(driver_->OpenGate());
  }
}

TEST_F(LocalTraffic, FlowsInEveryDirectionWhenAllowed) {
  ASSERT_TRUE(driver_->Close(true));
  for (const Addresses* ip : {&kIp4, &kIp6}) {
    const lab::End client{&lab_->Client(), ip->client};
    const lab::End host{&lab_->Host(), ip->hostInside};
    const lab::End router{&lab_->Internet(), ip->router};
    for (const Protocol protocol : lab::kProtocols) {
      EXPECT_TRUE(Conversation(protocol, host, client).Establish());
      EXPECT_TRUE(Conversation(protocol, client, host).Establish());
      // The router's address is in a subnet of the host: what is forwarded has two local ends.
      EXPECT_TRUE(Conversation(protocol, client, router).Establish());
    }
  }
}

TEST_F(LocalTraffic, IsSilentWhenItIsBlockedToo) {
  ASSERT_TRUE(driver_->Close(false));
  for (const Addresses* ip : {&kIp4, &kIp6}) {
    const lab::End client{&lab_->Client(), ip->client};
    const lab::End host{&lab_->Host(), ip->hostInside};
    for (const Protocol protocol : lab::kProtocols) {
      Conversation fromHost(protocol, host, client);
      Conversation toHost(protocol, client, host);
      Conversation across(protocol, client, {&lab_->Internet(), ip->router});
      lab::RawListener atHost(lab_->Host(), ip->client, fromHost.IpProtocol());
      lab_->Forget();
      for (Conversation* talk : {&fromHost, &toHost, &across})
        talk->Begin();
      lab_->Settle();
      // Neighbour discovery is the one thing that is heard.
      const bool isIcmp6 = fromHost.IpProtocol() == IPPROTO_ICMPV6;
      const std::size_t discovery = isIcmp6
                                        ? lab_->AtClient().Count({.type = ND_NEIGHBOR_SOLICIT}) +
                                              lab_->AtClient().Count({.type = ND_NEIGHBOR_ADVERT})
                                        : 0;
      EXPECT_EQ(lab_->AtClient().Count({.protocol = fromHost.IpProtocol()}), discovery);
      EXPECT_EQ(lab_->AtInternet().Count({.source = ip->client}), 0u);
      EXPECT_TRUE(atHost.Take() == 0 || discovery > 0);
    }
  }
}

TEST_F(LocalTraffic, OfTheMachineWithItselfAlwaysPasses) {
  ASSERT_TRUE(driver_->Close(false));
  for (const char* address : {"127.0.0.1", "192.168.50.1", "198.51.100.2", "::1"}) {
    const lab::End self{&lab_->Host(), address};
    for (const Protocol protocol : {Protocol::kTcp, Protocol::kUdp})
      EXPECT_TRUE(Conversation(protocol, self, self).Establish()) << address;
  }
}

}  // namespace
