// What leaks through a closed gate, as the other ends of the wires see it. Each probe is shown to
// be seen while the gate is open, or its silence afterwards would prove nothing.
#include <sched.h>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

#include "lab/raw_packet.h"
#include "system/crossings.h"
#include "system/leaks.h"

namespace {

using lab::Addresses;
using lab::Conversation;
using lab::DriverProcess;
using lab::kIp4;
using lab::kIp6;
using lab::NetworkLab;
using lab::Protocol;
using leaks::Crossings;
using leaks::Leaks;
using testing::Each;
using testing::Gt;
using testing::Pair;

constexpr Protocol kProtocols[] = {Protocol::kTcp, Protocol::kUdp, Protocol::kIcmp};

struct MatrixCase {
  const Addresses* ip;
  Protocol protocol;
  bool allowLocal;
};

std::vector<MatrixCase> EveryCase() {
  std::vector<MatrixCase> cases;
  for (const Addresses* ip : {&kIp4, &kIp6}) {
    for (const Protocol protocol : kProtocols) {
      for (const bool allowLocal : {false, true})
        cases.push_back({ip, protocol, allowLocal});
    }
  }
  return cases;
}

std::string NameOf(const testing::TestParamInfo<MatrixCase>& info) {
  const MatrixCase& tried = info.param;
  const std::map<Protocol, std::string> names = {
      {Protocol::kTcp, "Tcp"}, {Protocol::kUdp, "Udp"}, {Protocol::kIcmp, "Icmp"}};
  return names.at(tried.protocol) + (tried.ip == &kIp4 ? "OverIp4" : "OverIp6") +
         (tried.allowLocal ? "LocalAllowed" : "LocalBlocked");
}

class LeakMatrix : public Leaks, public testing::WithParamInterface<MatrixCase> {};

TEST_P(LeakMatrix, NothingCrossesAClosedGate) {
  Crossings crossings(*lab_, *GetParam().ip, GetParam().protocol);
  ASSERT_TRUE(crossings.Establish());
  EXPECT_THAT(crossings.Try(), Each(Pair(testing::_, Gt(0u))));
  ASSERT_TRUE(driver_->Close(GetParam().allowLocal));
  EXPECT_THAT(crossings.Try(), Each(Pair(testing::_, 0u)));
  EXPECT_THAT(crossings.Try(), Each(Pair(testing::_, 0u)));

  ASSERT_TRUE(driver_->OpenGate());
  Crossings afterwards(*lab_, *GetParam().ip, GetParam().protocol);
  ASSERT_TRUE(afterwards.Establish());
  EXPECT_THAT(afterwards.Try(), Each(Pair(testing::_, Gt(0u))));
}

INSTANTIATE_TEST_SUITE_P(Every, LeakMatrix, testing::ValuesIn(EveryCase()), NameOf);

// All of the matrix's protocols at once, for states of the program.
class ProgramStates : public Leaks {
 protected:
  void SetUp() override {
    Leaks::SetUp();
    if (IsSkipped()) return;
    for (const Addresses* ip : {&kIp4, &kIp6}) {
      for (const Protocol protocol : kProtocols) {
        crossings_.push_back(std::make_unique<Crossings>(*lab_, *ip, protocol));
        ASSERT_TRUE(crossings_.back()->Establish());
      }
    }
  }

  void ExpectOpen() {
    for (const auto& crossings : crossings_) {
      EXPECT_THAT(crossings->Try(), Each(Pair(testing::_, Gt(0u))));
    }
  }
  void ExpectClosed() {
    for (const auto& crossings : crossings_) {
      EXPECT_THAT(crossings->Try(), Each(Pair(testing::_, 0u)));
    }
  }

  std::vector<std::unique_ptr<Crossings>> crossings_;
};

TEST_F(ProgramStates, AFlushAndAKillLeaveItClosedAndARestartTakesItOver) {
  ExpectOpen();
  ASSERT_TRUE(driver_->Close(false));
  lab_->Host().Shell("nft flush ruleset; sleep 0.1");
  ExpectClosed();
  driver_->Kill();
  ExpectClosed();
  driver_ = std::make_unique<DriverProcess>(lab_->Host());
  ASSERT_TRUE(driver_->Close(true));
  ExpectClosed();
  driver_->Kill();
  ExpectClosed();
}

TEST_F(ProgramStates, AnOrderlyStopOpensTheGate) {
  ASSERT_TRUE(driver_->Close(false));
  EXPECT_TRUE(driver_->Stop());
  ExpectOpen();
}

TEST_F(ProgramStates, AKillWhileOpenLeavesItOpen) {
  driver_->Kill();
  ExpectOpen();
}

class Bypasses : public Leaks {};

// A change that first clears the rules and then builds new ones lets some of these through.
TEST_F(Bypasses, NoMomentOfAChangeLetsAnythingThrough) {
  Conversation flood(Protocol::kUdp, AF_INET, {&lab_->Host(), kIp4.hostOutside},
                     {&lab_->Internet(), kIp4.server});
  ASSERT_TRUE(flood.Establish());
  ASSERT_TRUE(driver_->Close(false));
  lab_->Forget();
  std::atomic<bool> stop{false};
  std::atomic<long> sent{0};
  std::thread sender([&] {
    cpu_set_t all;
    CPU_ZERO(&all);
    for (std::size_t processor = 0; processor < 64; ++processor)
      CPU_SET(processor, &all);
    ::sched_setaffinity(0, sizeof all, &all);
    for (; !stop; ++sent)
      flood.SendForth();
  });
  for (int change = 0; change < 200; ++change)
    EXPECT_TRUE(driver_->Close(change % 2 == 0));
  stop = true;
  sender.join();
  lab_->Settle();
  EXPECT_GT(sent, 1000);
  EXPECT_EQ(lab_->AtInternet().Count({.destination = kIp4.server}), 0u);
  EXPECT_EQ(flood.TakeForth(), 0);
}

// Neither a bridge's frames (eth1) nor those of a macvlan (eth2) come to the machine's own stack.
TEST_F(Bypasses, GuestsBehindABridgeOrOnAMacvlanAreBlockedToo) {
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
  const auto crossed = [this](Conversation& talk) {
    talk.SendForth();
    talk.SendBack();
    lab_->Settle();
    return talk.TakeForth() + talk.TakeBack();
  };
  for (const std::string net : {"1", "2"}) {
    Conversation local(Protocol::kUdp, AF_INET, {&guest, "10.9." + net + ".1"},
                       {&outside, "10.9." + net + ".2"});
    Conversation other(Protocol::kUdp, AF_INET6, {&guest, "2001:db8:9:" + net + "::1"},
                       {&outside, "2001:db8:9:" + net + "::2"});
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

TEST_F(Bypasses, TablesOfOthersThatAcceptEverythingDoNotOpenIt) {
  std::string others = "set -e;";
  for (const char* priority : {"-400", "0", "400"}) {
    for (const char* hook : {"input", "output", "forward"}) {
      const std::string chain = std::string(hook) + (priority[0] == '-' ? "m" : "p") +
                                std::to_string(std::abs(std::atoi(priority)));
      others += "nft 'add table inet others; add chain inet others " + chain +
                " { type filter hook " + hook + " priority " + priority +
                "; policy accept; }; add rule inet others " + chain +
                " ct state established accept; add rule inet others " + chain + " accept';";
    }
  }
  lab_->Host().Shell(others);
  for (const Addresses* ip : {&kIp4, &kIp6}) {
    Crossings crossings(*lab_, *ip, Protocol::kUdp);
    ASSERT_TRUE(crossings.Establish());
    ASSERT_TRUE(driver_->Close(true));
    EXPECT_THAT(crossings.Try(), Each(Pair(testing::_, 0u)));
    ASSERT_TRUE(driver_->OpenGate());
  }
}

TEST_F(Bypasses, ALocalAddressThatIsTranslatedToAnOutsideOneIsNotLocal) {
  lab_->Host().Shell(
      "nft 'add table ip others; add chain ip others out { type nat hook output priority -100; };"
      "add rule ip others out ip daddr 192.168.50.99 dnat to 203.0.113.10;"
      "add chain ip others in { type nat hook prerouting priority -100; };"
      "add rule ip others in ip daddr 192.168.50.1 udp dport 4000 dnat to 203.0.113.10'");
  const auto arrivals = [&](const lab::NetworkNamespace& from, const char* interfaceName,
                            const char* source, const char* to) {
    lab_->Forget();
    lab::SendRaw(from, interfaceName,
                 {.family = AF_INET,
                  .source = source,
                  .destination = to,
                  .protocol = IPPROTO_UDP,
                  .payload = lab::UdpPayload(4001, 4000)});
    lab_->Settle();
    return lab_->AtInternet().Count({.protocol = IPPROTO_UDP, .destination = kIp4.server});
  };
  const auto fromHost = [&] {
    return arrivals(lab_->Host(), NetworkLab::kHostOutside, "198.51.100.2", "192.168.50.99");
  };
  const auto fromClient = [&] {
    return arrivals(lab_->Client(), "eth0", kIp4.client, kIp4.hostInside);
  };
  EXPECT_EQ(fromHost(), 1u);
  EXPECT_EQ(fromClient(), 1u);
  ASSERT_TRUE(driver_->Close(true));
  EXPECT_EQ(fromHost(), 0u);
  EXPECT_EQ(fromClient(), 0u);
}

}  // namespace
