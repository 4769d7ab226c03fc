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

#include "lab/network_namespace.h"

namespace {

using lab::kAllowLocal;
using lab::kBlock;
using lab::kBlockLocal;
using lab::kPass;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

bool GiveUpNetworkRights() {
  __user_cap_header_struct header{.version = _LINUX_CAPABILITY_VERSION_3, .pid = 0};
  __user_cap_data_struct rights[_LINUX_CAPABILITY_U32S_3] = {};
  if (::syscall(SYS_capget, &header, rights) != 0) return false;
  rights[0].effective &= ~(1u << CAP_NET_ADMIN);
  return ::syscall(SYS_capset, &header, rights) == 0;
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

constexpr const char* kNoRight =
    "QGIpHook: the gate cannot be opened: no right to change the packet filter";
constexpr const char* kNoFilter =
    "QGIpHook: the gate cannot be opened: the kernel has no nf_tables";

class HookDriver : public testing::Test {
 protected:
  void SetUp() override {
    const std::string reason = lab::NetworkNamespace::WhyNot();
    if (!reason.empty()) GTEST_SKIP() << reason;
    place_.emplace();
    place_->Shell(
        "set -e; ip link set lo up; ip link add one type veth peer name two;"
        "ip link set one up; ip link set two up");
  }

  // Runs `work` inside, with the driver loaded.
  void WithDriver(const std::function<void(lab::LoadedDriver&)>& work) {
    place_->Run([&work] {
      lab::LoadedDriver driver;
      ASSERT_EQ(driver.LoadResult(), 0u);
      ASSERT_TRUE(driver.HasDevice());
      work(driver);
      EXPECT_THAT(driver.TakeLines(), IsEmpty());
    });
  }

  // The same in a process whose rights `work` may give up; the status that it returns.
  int InChild(const std::function<int(lab::LoadedDriver&)>& work) {
    const pid_t child = place_->Start([&work] {
      lab::LoadedDriver driver;
      return work(driver);
    });
    int status = -1;
    return ::waitpid(child, &status, 0) == child && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  std::string Tables() { return place_->Shell("nft list tables"); }
  // Without what tells of the table's owner.
  std::string Rules() {
    return place_->Shell("nft -n list table inet quillgate | sed 's/ # .*//; /^\tflags/d; /^$/d'");
  }

  std::optional<lab::NetworkNamespace> place_;
};

TEST_F(HookDriver, BlocksInOneTableAndPassesWithoutAny) {
  WithDriver([this](lab::LoadedDriver& driver) {
    EXPECT_EQ(driver.Open(), 0u);
    EXPECT_EQ(Tables(), "");
    EXPECT_EQ(driver.Control(kPass), 0u);
    EXPECT_EQ(Tables(), "");
    EXPECT_EQ(driver.Control(kBlockLocal), 0u);
    EXPECT_EQ(Tables(), "");
    EXPECT_EQ(driver.Control(kBlock), 0u);
    for (const char* chain : {"input", "output", "forward"}) {
      EXPECT_THAT(Rules(), HasSubstr(std::string("type filter hook ") + chain +
                                     " priority 0; policy drop;"));
    }
    EXPECT_THAT(Rules(), Not(HasSubstr("established")));
    EXPECT_EQ(driver.Control(kPass), 0u);
    EXPECT_EQ(driver.Control(kPass), 0u);
    EXPECT_EQ(Tables(), "");
  });
}

TEST_F(HookDriver, LocalTrafficIsBlockedUntilItIsAllowed) {
  WithDriver([this](lab::LoadedDriver& driver) {
    EXPECT_EQ(driver.Control(kBlock), 0u);
    EXPECT_THAT(Rules(), Not(HasSubstr("192.168.0.0/16")));
    EXPECT_EQ(driver.Control(kAllowLocal), 0u);
    EXPECT_THAT(Rules(), HasSubstr("192.168.0.0/16"));
    EXPECT_EQ(driver.Control(kBlockLocal), 0u);
    EXPECT_THAT(Rules(), Not(HasSubstr("192.168.0.0/16")));
  });
}

TEST_F(HookDriver, OtherCodesAreInvalidAndChangeNothing) {
  WithDriver([this](lab::LoadedDriver& driver) {
    EXPECT_EQ(driver.Control(kBlock), 0u);
    const std::string before = Rules();
    for (const std::uint32_t code : {0u, 0x939C2090u, 0x939C2095u, 0x939C20A4u}) {
      EXPECT_EQ(driver.Control(code), ERROR_INVALID_FUNCTION) << code;
    }
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
    EXPECT_EQ(driver.Control(kAllowLocal), 0u);
    EXPECT_EQ(driver.Control(kBlock), 0u);
  });
  EXPECT_EQ(
      place_->Shell("for set in subnets4 subnets6; do nft list set inet quillgate $set |"
                    " tr -d ' \\t\\n\"' | sed 's/.*elements={//; s/}.*//; s/two.fe80::.64,*//;"
                    " s/one.fe80::.64,*//'; echo; done"),
      "one.203.0.113.0/24,two.9.0.0.3,two.10.0.0.0/8,two.203.0.113.64/26\n"
      "one.2001:db8:5::/64,\n");
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

TEST_F(HookDriver, UnloadingLeavesTheGateAsItIsAndTheNextOneFindsIt) {
  WithDriver([](lab::LoadedDriver& driver) { EXPECT_EQ(driver.Control(kBlock), 0u); });
  const std::string before = Rules();
  WithDriver([&](lab::LoadedDriver& driver) {
    EXPECT_EQ(driver.Open(), 0u);
    EXPECT_EQ(Rules(), before);
    // The gate is closed, by another: what is chosen takes effect at once here too.
    EXPECT_EQ(driver.Control(kAllowLocal), 0u);
    EXPECT_NE(Rules(), before);
  });
}

// A program that starts lets everything pass before it knows what has been decided.
TEST_F(HookDriver, AGateThatIsFoundClosedStaysSoUntilADecision) {
  // Whether it is closed after each of the codes, and after the unloading.
  const auto load = [this](const std::vector<std::uint32_t>& codes) {
    std::string closed;
    WithDriver([&](lab::LoadedDriver& driver) {
      for (const std::uint32_t code : codes) {
        EXPECT_EQ(driver.Control(code), 0u);
        closed += Tables() != "" ? 'y' : 'n';
      }
    });
    return closed + (Tables() != "" ? 'y' : 'n');
  };
  EXPECT_EQ(load({kBlock}), "yy");
  EXPECT_EQ(load({kPass, kBlockLocal, kBlock}), "yyyy");
  EXPECT_EQ(load({kPass, kAllowLocal}), "yyn") << "ended in order";
  EXPECT_EQ(load({kBlock}), "yy");
  EXPECT_EQ(load({kPass, kPass}), "ynn") << "decided to pass";
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
    EXPECT_THAT(Rules(), HasSubstr("type filter hook input priority 0; policy drop;"));
    EXPECT_EQ(driver.Control(kPass), 0u);
    EXPECT_EQ(Tables(), "table inet other\n");
  });
}

TEST_F(HookDriver, WithoutTheRightItSaysSoAndTheStateStays) {
  WithDriver([](lab::LoadedDriver& driver) { EXPECT_EQ(driver.Control(kBlock), 0u); });
  const std::string before = Rules();
  EXPECT_EQ(InChild([](lab::LoadedDriver& driver) {
              if (!GiveUpNetworkRights()) return 2;
              if (driver.Open() != ERROR_ACCESS_DENIED) return 3;
              if (driver.TakeLines() != std::vector<std::string>{kNoRight}) return 4;
              if (driver.Control(kBlock) != ERROR_ACCESS_DENIED) return 5;
              return driver.TakeLines().size() == 1 ? 0 : 6;
            }),
            0);
  EXPECT_EQ(Rules(), before);
}

TEST_F(HookDriver, WithoutAPacketFilterInTheKernelItSaysSo) {
  EXPECT_EQ(InChild([](lab::LoadedDriver& driver) {
              if (!HideThePacketFilter()) return 2;
              if (driver.Open() != ERROR_FILE_NOT_FOUND) return 3;
              return driver.TakeLines() == std::vector<std::string>{kNoFilter} ? 0 : 4;
            }),
            0);
}

}  // namespace
