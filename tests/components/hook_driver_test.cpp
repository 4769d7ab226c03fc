// The hook driver in a network namespace: its device, its codes and the rules that they leave.
#include "lab/hook_driver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/capability.h>
#include <linux/filter.h>
#include <linux/netlink.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <winerror.h>

#include <cerrno>
#include <chrono>
#include <cstddef>
#include <functional>
#include <iterator>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "lab/database_folder.h"
#include "lab/network_namespace.h"

namespace {

using lab::kAllowLocal;
using lab::kBlock;
using lab::kBlockLocal;
using lab::kPass;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

bool GiveUpRights() {
  __user_cap_header_struct header{.version = _LINUX_CAPABILITY_VERSION_3, .pid = 0};
  const __user_cap_data_struct none[_LINUX_CAPABILITY_U32S_3] = {};
  return ::syscall(SYS_capset, &header, none) == 0;
}

// From now on this process is on a kernel that was built without netfilter's sockets.
bool HideThePacketFilter() {
  constexpr auto kFirst = static_cast<unsigned>(offsetof(seccomp_data, args[0]));
  constexpr auto kThird = static_cast<unsigned>(offsetof(seccomp_data, args[2]));
  sock_filter program[] = {
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_socket, 0, 5),
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, kFirst),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, AF_NETLINK, 0, 3),
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, kThird),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, NETLINK_NETFILTER, 0, 1),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EPROTONOSUPPORT),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
  };
  const sock_fprog filter{static_cast<unsigned short>(std::size(program)), program};
  return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
         ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

class HookDriver : public testing::Test {
 protected:
  void SetUp() override {
    const std::string reason = lab::NetworkNamespace::WhyNot();
    if (!reason.empty()) GTEST_SKIP() << reason;
    place_.emplace();
    // Without addresses that come by themselves a moment later.
    place_->Shell(
        "set -e; ip link set lo up; ip link add one type veth peer name two;"
        "for link in one two; do ip link set $link addrgenmode none up; done");
  }

  // Runs `work` inside, with the driver loaded.
  void WithDriver(const std::function<void(lab::LoadedDriver&)>& work) {
    place_->Run([this, &work] {
      lab::LoadedDriver driver(folder_.Path().string());
      EXPECT_EQ(driver.Open(), 0u);
      work(driver);
      EXPECT_THAT(driver.TakeLines(), IsEmpty());
    });
  }

  std::string Tables() { return place_->Shell("nft list tables"); }
  // Without what tells of the table's owner.
  std::string Rules() {
    return place_->Shell("nft -n list table inet quillgate | sed 's/ # .*//; /^\tflags/d; /^$/d'");
  }
  // "local": closed but for local traffic; "lease": open until its end.
  std::string State() {
    if (Tables().find("quillgate") == std::string::npos) return "open";
    const std::string rules = Rules();
    for (const std::string chain : {"input", "output", "forward"}) {
      EXPECT_THAT(rules, HasSubstr("type filter hook " + chain + " priority 0; policy drop;"));
    }
    EXPECT_THAT(rules, Not(HasSubstr("established")));
    if (rules.find(" expires ") != std::string::npos) return "lease";
    return rules.find("192.168.0.0/16") == std::string::npos ? "closed" : "local";
  }

  std::optional<lab::NetworkNamespace> place_;
  lab::DatabaseFolder folder_;  // the driver's root folder
};

// A program that starts lets everything pass before it knows what has been decided, so a gate that
// is found closed stays so until then.
TEST_F(HookDriver, EachCodeGivesItsStateAndADecisionAloneOpensAGateThatIsFoundClosed) {
  const struct {
    bool optionOn;
    std::vector<std::uint32_t> codes;
    std::vector<std::string> states;  // at the loading, after each code, and after the unloading
  } programs[] = {
      {false,
       {kPass, kBlockLocal, kBlock, kAllowLocal, kBlockLocal, kPass, kPass},
       {"open", "open", "open", "closed", "local", "closed", "open", "open", "open"}},
      {false, {kBlock}, {"open", "closed", "closed"}},
      {false, {kPass, kBlockLocal, kBlock}, {"closed", "closed", "closed", "closed", "closed"}},
      {false, {kPass, kAllowLocal}, {"closed", "closed", "local", "open"}},  // ended in order
      {false, {kAllowLocal, kBlock}, {"open", "open", "local", "local"}},
      {false, {kPass, kPass}, {"local", "local", "open", "open"}},  // decided to pass
      {true,
       {kPass, kPass, kBlock, kPass, kAllowLocal, kPass, kBlock},
       {"open", "lease", "lease", "closed", "lease", "lease", "lease", "local", "local"}},
      {true, {kPass, kPass}, {"local", "local", "lease", "open"}},
      {true, {kPass}, {"open", "lease", "open"}},
  };
  for (const auto& [optionOn, codes, expected] : programs) {
    if (optionOn) lab::WriteFile(folder_.Path() / "closed_from_boot", "");
    std::vector<std::string> states;
    WithDriver([&](lab::LoadedDriver& driver) {
      states.push_back(State());
      for (const std::uint32_t code : codes) {
        EXPECT_EQ(driver.Control(code), 0u);
        states.push_back(State());
      }
    });
    states.push_back(State());
    EXPECT_EQ(states, expected);
  }
  EXPECT_EQ(Tables(), "");
}

TEST_F(HookDriver, OtherCodesAreInvalidAndChangeNothing) {
  WithDriver([this](lab::LoadedDriver& driver) {
    EXPECT_EQ(driver.Control(kBlock), 0u);
    const std::string before = Rules();
    for (const std::uint32_t code : {0u, 0x939C2090u, 0x939C2095u, 0x939C20A4u})
      EXPECT_EQ(driver.Control(code), ERROR_INVALID_FUNCTION) << code;
    EXPECT_EQ(Rules(), before);
  });
}

TEST_F(HookDriver, ADefaultRouteIsNoLocalSubnet) {
  place_->Shell(
      "set -e; ip addr add 203.0.113.5/24 dev one; ip addr add 203.0.113.77/26 dev two;"
      "ip addr add 8.8.4.4/0 dev one; ip addr add 9.0.0.1 peer 9.9.9.9/1 dev two;"
      "ip addr add 128.1.2.3/1 dev one; ip addr add 9.0.0.2 peer 9.0.0.3/32 dev two;"
      "ip addr add 2001:db8:5::1/64 dev one nodad; ip addr add 2400::1/0 dev two nodad;"
      "ip addr add 2002:1::1/16 dev one nodad; ip addr add 127.0.0.53/2 dev lo;"
      "ip addr add 12.0.0.1/15 dev one; ip addr add 10.0.0.1/8 dev two;"
      "ip addr add 2400:1::1/63 dev one nodad;"
      "ip link add spare0 type veth peer name spare1; ip addr add 192.0.2.1/24 dev spare0");
  WithDriver([this](lab::LoadedDriver& driver) {
    EXPECT_EQ(driver.Control(kBlock), 0u);
    EXPECT_EQ(driver.Control(kAllowLocal), 0u);
  });
  EXPECT_EQ(place_->Shell("for set in subnets4 subnets6; do nft list set inet quillgate $set |"
                          " tr -d ' \\t\\n\"' | sed 's/.*elements={//; s/}.*//'; echo; done"),
            "one.203.0.113.0/24,two.9.0.0.3,two.10.0.0.0/8,two.203.0.113.64/26\n"
            "one.2001:db8:5::/64\n");
}

TEST_F(HookDriver, AClosedGateFollowsAddressesAndInterfaces) {
  WithDriver([this](lab::LoadedDriver& driver) {
    EXPECT_EQ(driver.Control(kBlock), 0u);
    place_->Shell(
        "ip addr add 203.0.113.5/24 dev one; ip link add b~1 type bridge;"
        "ip link set two down; ip link set two name drei");
    std::string rules;
    for (int i = 0; i < 400 && rules.find("device \"drei\"") == std::string::npos; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
      rules = place_->Shell("nft list table netdev quillgate; nft list table inet quillgate");
    }
    for (const char* part :
         {"\"one\" . 203.0.113.0/24", "egress device \"b~1\"", "ingress device \"drei\""})
      EXPECT_THAT(rules, HasSubstr(part));
    EXPECT_THAT(rules, Not(HasSubstr("device \"two\"")));
  });
}

// A table that was made without an owner never has one, and is put back; an owned one stays.
TEST_F(HookDriver, WhatOthersDoToAClosedGateDoesNotLast) {
  WithDriver([this](lab::LoadedDriver& driver) {
    const auto attack = [&](const std::string& command) {
      EXPECT_EQ(driver.Control(kBlock), 0u);
      const std::string closed = Rules();
      const bool owned = place_->Shell("nft list table inet quillgate").find("flags owner") < 100;
      place_->Shell("nft " + command + " || true");
      std::vector<std::string> lines;
      for (int i = 0; i < 2000 && lines.empty() && !owned; ++i) {
        lines = driver.TakeLines();
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
      }
      EXPECT_TRUE(Rules() == closed) << command;
      EXPECT_TRUE(owned || (lines.size() == 1 && lines[0].ends_with("put back."))) << command;
      EXPECT_EQ(driver.Control(kPass), 0u);
    };
    for (const char* command : {"flush ruleset", "delete table inet quillgate",
                                "insert rule inet quillgate output accept",
                                "add table inet quillgate '{ flags dormant; }'"}) {
      attack(command);
      place_->Shell("nft add table inet quillgate");
      attack(command);
    }
  });
}

TEST_F(HookDriver, ADamagedTableIsReplacedAndOthersAreLeftAlone) {
  place_->Shell(
      "nft add table inet other && nft add table inet quillgate '{ flags dormant; }' &&"
      "nft add chain inet quillgate input '{ type filter hook input priority 5; }'");
  WithDriver([this](lab::LoadedDriver& driver) {
    EXPECT_EQ(driver.Control(kBlock), 0u);
    EXPECT_THAT(Rules(), Not(HasSubstr("dormant")));
    EXPECT_EQ(State(), "closed");
    EXPECT_EQ(driver.Control(kPass), 0u);
    EXPECT_EQ(Tables(), "table inet other\n");
  });
}

TEST_F(HookDriver, WithoutTheRightOrAPacketFilterItSaysSoAndTheStateStays) {
  const struct {
    bool (*deprive)();
    std::uint32_t openError;
    std::uint32_t blockError;
    const char* reason;
  } cases[] = {
      {GiveUpRights, ERROR_ACCESS_DENIED, ERROR_ACCESS_DENIED,
       "no right to change the packet filter"},
      {HideThePacketFilter, ERROR_FILE_NOT_FOUND, ERROR_GEN_FAILURE, "the kernel has no nf_tables"},
  };
  WithDriver([](lab::LoadedDriver& driver) { EXPECT_EQ(driver.Control(kBlock), 0u); });
  const std::string before = Rules();
  for (const auto& [deprive, openError, blockError, reason] : cases) {
    const pid_t child = place_->Start([&] {
      const std::string line = std::string("QGIpHook: the gate cannot be opened: ") + reason;
      lab::LoadedDriver driver;
      if (!deprive()) return 2;
      if (driver.Open() != openError) return 3;
      if (driver.TakeLines() != std::vector{line}) return 4;
      if (driver.Control(kBlock) != blockError) return 5;
      return driver.TakeLines().size() == 1 ? 0 : 6;
    });
    int status = -1;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0) << reason;
    EXPECT_EQ(Rules(), before);
  }
}

}  // namespace
