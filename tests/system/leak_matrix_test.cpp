// What leaks through a closed gate, as the other ends of the wires see it. Each probe is shown to
// be seen while the gate is open, or its silence afterwards would prove nothing.
#include "system/crossings.h"
#include "system/leaks.h"

namespace {

using lab::Conversation;
using lab::kIp4;
using lab::NetworkLab;
using lab::Protocol;
using leaks::Crossings;
using leaks::kAllCross;
using leaks::kNoneCross;

class LeakMatrix : public leaks::Leaks {};

TEST_F(LeakMatrix, NothingCrossesAClosedGate) {
  for (const bool allowLocal : {false, true}) {
    SCOPED_TRACE(allowLocal ? "local traffic allowed" : "local traffic blocked");
    Crossings crossings(*lab_);
    EXPECT_THAT(crossings.Try(), kAllCross);
    ASSERT_TRUE(driver_->Close(allowLocal));
    EXPECT_THAT(crossings.Try(), kNoneCross);
    EXPECT_THAT(crossings.Try(), kNoneCross);
    ASSERT_TRUE(driver_->OpenGate());
    EXPECT_THAT(Crossings(*lab_).Try(), kAllCross);
  }
}

TEST_F(LeakMatrix, AKillLeavesAnOpenGateOpenAndAFlushOrAKillAClosedOneClosed) {
  driver_->Kill();
  Crossings crossings(*lab_);
  EXPECT_THAT(crossings.Try(), kAllCross);
  StartDriver();
  ASSERT_TRUE(driver_->Close(false));
  lab_->Host().Shell("nft flush ruleset; sleep 0.1");
  EXPECT_THAT(crossings.Try(), kNoneCross) << "flushed";
  driver_->Kill();
  EXPECT_THAT(crossings.Try(), kNoneCross) << "killed";
  StartDriver();
  ASSERT_TRUE(driver_->Close(true));
  EXPECT_THAT(crossings.Try(), kNoneCross) << "taken over";
  driver_->Kill();
  EXPECT_THAT(crossings.Try(), kNoneCross) << "killed with local traffic allowed";
}

// A change that first clears the rules and then builds new ones lets some of these through.
TEST_F(LeakMatrix, NoMomentOfAChangeLetsAnythingThrough) {
  leaks::Flood flood(*lab_);
  ASSERT_TRUE(driver_->Close(false));
  lab_->Forget();
  flood.Begin({});
  for (int change = 0; change < 200; ++change)
    EXPECT_TRUE(driver_->Close(change % 2 == 0));
  flood.Stop();
  EXPECT_GT(flood.Sent(), 1000);
  EXPECT_EQ(flood.Arrived(), 0u);
}

// Neither a bridge's frames (eth1) nor those of a macvlan (eth2) come to the machine's own stack.
TEST_F(LeakMatrix, GuestsBehindABridgeOrOnAMacvlanAreBlockedToo) {
  const lab::NetworkNamespace guest;
  const lab::NetworkNamespace outside;
  lab_->Host().Shell(
      "set -e; guest='netns " + guest.Path() + "'; outside='netns " + outside.Path() +
      "'; ip link add bridge0 type bridge; ip link set bridge0 up;"
      "ip link add port0 type veth peer name eth1 $guest; ip link set port0 up master bridge0;"
      "ip link add port1 type veth peer name eth1 $outside; ip link set port1 up master bridge0;"
      "ip link add parent0 type veth peer name eth2 $outside; ip link set parent0 up;"
      "ip link add link parent0 name eth2 $guest type macvlan");
  const std::string configure =
      "for net in 1 2; do ip link set eth$net up; ip addr add 10.9.$net.$n/24 dev eth$net;"
      "ip addr add 2001:db8:9:$net::$n/64 dev eth$net nodad; done";
  guest.Shell("n=1; " + configure);
  outside.Shell("n=2; " + configure);
  const auto crossed = [](Conversation& talk) {
    talk.SendForth();
    talk.SendBack();
    lab_->Settle();
    return talk.TakeForth() + talk.TakeBack();
  };
  for (const std::string net : {"10.9.1.", "10.9.2."}) {
    const std::string net6 = "2001:db8:9:" + net.substr(5, 1) + "::";
    Conversation local(Protocol::kUdp, {&guest, net + "1"}, {&outside, net + "2"});
    Conversation other(Protocol::kUdp, {&guest, net6 + "1"}, {&outside, net6 + "2"});
    ASSERT_TRUE(local.Establish() && other.Establish());
    for (const bool allowLocal : {false, true}) {
      ASSERT_TRUE(driver_->Close(allowLocal));
      EXPECT_EQ(crossed(local), allowLocal ? 2 : 0) << net;
      EXPECT_EQ(crossed(other), 0) << net;
    }
    ASSERT_TRUE(driver_->OpenGate());
    EXPECT_EQ(crossed(other), 2) << net;
  }
  lab_->Host().Shell("ip link del bridge0");
}

TEST_F(LeakMatrix, TablesOfOthersThatAcceptEverythingDoNotOpenIt) {
  lab_->Host().Shell(
      "set -e; for priority in -400 0 400; do for hook in input output forward; do n=$((n + 1));"
      "nft \"add table inet others; add chain inet others c$n"
      " { type filter hook $hook priority $priority; policy accept; };"
      "add rule inet others c$n ct state established accept;"
      "add rule inet others c$n accept\"; done; done");
  Crossings crossings(*lab_);
  ASSERT_TRUE(driver_->Close(true));
  EXPECT_THAT(crossings.Try(), kNoneCross);
}

TEST_F(LeakMatrix, ALocalAddressThatIsTranslatedToAnOutsideOneIsNotLocal) {
  lab_->Host().Shell(
      "nft 'add table ip others; add chain ip others out { type nat hook output priority -100; };"
      "add rule ip others out ip daddr 192.168.50.99 dnat to 203.0.113.10;"
      "add chain ip others in { type nat hook prerouting priority -100; };"
      "add rule ip others in ip daddr 192.168.50.1 udp dport 4000 dnat to 203.0.113.10'");
  const auto arrivals = [](const lab::NetworkNamespace& from, const char* interfaceName,
                           const char* source, const char* to) {
    return Arrivals(from, interfaceName, lab::UdpPacket(source, to, 4001, 4000), lab_->AtInternet(),
                    {.protocol = IPPROTO_UDP, .destination = kIp4.server});
  };
  for (const bool isOpen : {true, false}) {
    ASSERT_TRUE(isOpen || driver_->Close(true));
    EXPECT_EQ(arrivals(lab_->Host(), NetworkLab::kHostOutside, kIp4.hostOutside, "192.168.50.99"),
              isOpen ? 1u : 0u);
    EXPECT_EQ(arrivals(lab_->Client(), "eth0", kIp4.client, kIp4.hostInside), isOpen ? 1u : 0u);
  }
}

}  // namespace
