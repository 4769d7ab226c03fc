// Local traffic past a closed gate: all of it when it is allowed, none when it is not.
#include <netinet/icmp6.h>

#include <span>
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

// Where datagrams go, out of the host's inner interface, whatever the routes say. The subnets of
// the outer one are not local there, nor are those with a short prefix, nor what lies behind a
// gateway (44.1.0.88 and fd50::2).
constexpr const char* kLocal[] = {
    "192.168.50.2", "192.168.50.255", "192.168.7.7", "10.255.1.2",      "172.16.0.1",
    "172.31.255.1", "169.254.7.7",    "224.0.0.251", "239.255.255.250", "255.255.255.255",
    "44.1.0.77",    "44.1.0.88",      "fd50::2",     "fc00::1",         "fd12:3456::1",
    "fe80::77",     "ff02::fb",       "ff05::c",     "ff12::1",         "ff35::1",
    "2400:1::77"};
constexpr const char* kNotLocal[] = {
    "192.169.0.1",      "11.0.0.1",       "172.32.0.1",    "169.253.7.7",       "198.51.100.77",
    "198.51.101.77",    "100.64.0.1",     "203.0.113.10",  "8.8.8.8",           "224.0.1.1",
    "239.192.0.1",      "232.1.1.1",      "44.1.200.7",    "45.1.0.77",         "fe00::1",
    "fec0::1",          "2001:db8:1::77", "2001:db8:2::1", "2001:db8:ffff::10", "2606:4700::1",
    "64:ff9b::808:808", "ff08::1",        "ff0e::1",       "ff3e::1",           "2400:1::200",
    "2400:2:0:1::77"};

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
    for (const char* address : kLocal)
      neighbours += Neighbour(address);
    for (const char* address : kNotLocal)
      neighbours += Neighbour(address);
    lab_->Host().Shell(neighbours + kSubnets);
  }
  void TearDown() override {
    if (!IsSkipped()) {
      lab_->Host().Shell("ip -6 route del default dev home0; ip neigh flush nud permanent");
    }
    Leaks::TearDown();
  }

  static bool IsIp4(const std::string& address) { return address.find(':') == std::string::npos; }
  // Groups have no neighbours, and the client is one already.
  static std::string Neighbour(const std::string& address) {
    const bool isGroup = IsIp4(address) ? std::stoi(address) >= 224 : address.starts_with("ff");
    if (isGroup || address == kIp4.client || address == kIp6.client) return "";
    return "ip neigh replace " + address + " lladdr ff:ff:ff:ff:ff:ff dev home0;";
  }

  static std::size_t ArrivalsAtClient(const RawPacket& packet) {
    return Arrivals(lab_->Host(), NetworkLab::kHostInside, packet, lab_->AtClient(),
                    {.protocol = packet.protocol, .destination = packet.destination});
  }

  static void ExpectArrivals(std::span<const char* const> destinations, bool arrive) {
    for (const char* address : destinations) {
      const Addresses& ip = IsIp4(address) ? kIp4 : kIp6;
      EXPECT_EQ(ArrivalsAtClient(lab::UdpPacket(ip.hostInside, address)), arrive ? 1u : 0u)
          << address;
    }
  }
};

TEST_F(LocalTraffic, PassesExactlyWhenItIsLocalAndAllowed) {
  const auto expect = [](const char* state, bool local, bool others) {
    SCOPED_TRACE(state);
    ExpectArrivals(kLocal, local);
    ExpectArrivals(kNotLocal, others);
  };
  expect("open", true, true);
  ASSERT_TRUE(driver_->Close(true));
  expect("closed, local allowed", true, false);
  ASSERT_TRUE(driver_->Close(false));
  expect("closed", false, false);
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

TEST_F(LocalTraffic, FlowsInEveryDirectionWhenAllowedAndInNoneWhenBlocked) {
  for (const Addresses* ip : {&kIp4, &kIp6}) {
    const lab::End client{&lab_->Client(), ip->client};
    const lab::End host{&lab_->Host(), ip->hostInside};
    // The router's address is in a subnet of the host: what is forwarded has two local ends.
    const lab::End router{&lab_->Internet(), ip->router};
    for (const Protocol protocol : lab::kProtocols) {
      ASSERT_TRUE(driver_->Close(false));
      Conversation fromHost(protocol, host, client);
      Conversation toHost(protocol, client, host);
      Conversation across(protocol, client, router);
      lab::RawListener atHost(lab_->Host(), ip->client, fromHost.IpProtocol());
      lab_->Forget();
      for (Conversation* talk : {&fromHost, &toHost, &across})
        talk->Begin();
      lab_->Settle();
      // Neighbour discovery is the one thing that is heard.
      std::size_t discovery = 0;
      if (fromHost.IpProtocol() == IPPROTO_ICMPV6) {
        for (const int type : {ND_NEIGHBOR_SOLICIT, ND_NEIGHBOR_ADVERT})
          discovery += lab_->AtClient().Count({.type = type});
      }
      EXPECT_EQ(lab_->AtClient().Count({.protocol = fromHost.IpProtocol()}), discovery);
      EXPECT_EQ(lab_->AtInternet().Count({.source = ip->client}), 0u);
      EXPECT_TRUE(atHost.Take() == 0 || discovery > 0);

      ASSERT_TRUE(driver_->Close(true));
      EXPECT_TRUE(Conversation(protocol, host, client).Establish());
      EXPECT_TRUE(Conversation(protocol, client, host).Establish());
      EXPECT_TRUE(Conversation(protocol, client, router).Establish());
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
