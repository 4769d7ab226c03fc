// The kernel's own interfaces, in a network namespace of the test's.
#include <windows.h>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <linux/if_packet.h>
#include <linux/if_tun.h>
#include <net/if.h>
#include <net/if_arp.h>

#include <ntddndis.h>

#include <sys/ioctl.h>
#include <sys/socket.h>

#include <cstring>
#include <string>
#include <vector>

#include "own_namespaces.h"
#include "platform/kit/failing_call.h"
#include "platform/net/layer/interface_queries.h"

namespace {

using own_namespaces::Succeeds;
using testing::ElementsAre;

constexpr DWORD kSent = OID_GEN_DIRECTED_BYTES_XMIT;
constexpr DWORD kReceived = OID_GEN_DIRECTED_BYTES_RCV;

class KernelInterfaces : public testing::Test {
 protected:
  static constexpr const char* kPlugIn =
      "ip link add near mtu 65535 type veth peer name far mtu 65535 &&"
      " ip link set near up && ip link set far up";

  void SetUp() override {
    const std::string reason = own_namespaces::Enter();
    if (!reason.empty()) GTEST_SKIP() << reason;
    // Where there is IPv6, its own packets would be counted too.
    Succeeds("echo 1 2>/dev/null >/proc/sys/net/ipv6/conf/default/disable_ipv6");
    Succeeds("ip link del near 2>/dev/null");
    ASSERT_TRUE(Succeeds(kPlugIn));
  }
  void TearDown() override { Succeeds("ip link del near 2>/dev/null"); }

  // Sends frames of that many bytes out of the interface.
  static void Send(const char* interface, std::size_t bytes, int count) {
    const int socket = ::socket(AF_PACKET, SOCK_RAW | SOCK_CLOEXEC, 0);
    ASSERT_GE(socket, 0);
    // Past the queue, which drops what comes too soon after the link is up.
    const int bypass = 1;
    ::setsockopt(socket, SOL_PACKET, PACKET_QDISC_BYPASS, &bypass, sizeof bypass);
    sockaddr_ll to{};
    to.sll_family = AF_PACKET;
    to.sll_ifindex = static_cast<int>(::if_nametoindex(interface));
    const std::vector<char> frame(bytes, '\xFF');
    for (int i = 0; i < count; ++i) {
      const auto sent = ::sendto(socket, frame.data(), frame.size(), 0,
                                 reinterpret_cast<const sockaddr*>(&to), sizeof to);
      ASSERT_EQ(sent, static_cast<ssize_t>(bytes)) << std::strerror(errno);
    }
    ::close(socket);
  }

  static std::uint64_t Counter(const std::wstring& name, DWORD objectId) {
    const HANDLE device = OpenInterface(name);
    std::uint64_t value = 0;
    DWORD returned = 0;
    EXPECT_TRUE(::DeviceIoControl(device, IOCTL_NDIS_QUERY_GLOBAL_STATS, &objectId, sizeof objectId,
                                  &value, sizeof value, &returned, nullptr));
    ::CloseHandle(device);
    return value;
  }

  static std::vector<std::string> Names() {
    std::vector<std::string> names;
    const auto adapters = Adapters();
    for (const auto* each = adapters.data(); each != nullptr; each = each->Next)
      names.emplace_back(each->AdapterName);
    return names;
  }
};

TEST_F(KernelInterfaces, CountersFollowRealPacketsInTheirDirectionPastFourGigabytes) {
  const auto sent = Counter(L"near", kSent);
  const auto received = Counter(L"near", kReceived);
  const auto farReceived = Counter(L"far", kReceived);
  Send("near", 1000, 7);
  EXPECT_EQ(Counter(L"near", kSent), sent + 7000);
  EXPECT_EQ(Counter(L"near", kReceived), received);
  Send("far", 500, 2);
  EXPECT_EQ(Counter(L"near", kReceived), received + 1000);
  EXPECT_EQ(Counter(L"far", kReceived), farReceived + 7000);

  constexpr std::size_t kFrame = 65'000;
  constexpr int kFrames = 66'100;  // a little more than 2 to the power of 32
  Send("near", kFrame, kFrames);
  const auto after = Counter(L"near", kSent);
  EXPECT_EQ(after, sent + 7000 + std::uint64_t{kFrame} * kFrames);
  MIB_IFROW row{};
  row.dwIndex = ::if_nametoindex("near");
  ASSERT_EQ(::GetIfEntry(&row), NO_ERROR);
  EXPECT_EQ(row.dwOutOctets, static_cast<DWORD>(after & 0xFFFF'FFFF));
}

TEST_F(KernelInterfaces, ACardThatIsPulledAndPutBackHasCountedAllOfIt) {
  const auto before = Counter(L"near", kSent);
  for (std::uint64_t piece = 1; piece <= 5; ++piece) {
    Send("near", 50'000, 40);
    ASSERT_TRUE(Succeeds("ip link del near") && Succeeds(kPlugIn));
    EXPECT_EQ(Counter(L"near", kSent), before + piece * 2'000'000);
  }
}

TEST_F(KernelInterfaces, AnInterfaceThatWentAwayIsMissedAtOnce) {
  Counter(L"near", kSent);
  ASSERT_TRUE(Succeeds("ip link del near"));
  EXPECT_EQ(ErrorOf(OpenInterface(L"near") != INVALID_HANDLE_VALUE), ERROR_FILE_NOT_FOUND);
}

TEST_F(KernelInterfaces, TheCardWithTheDefaultRouteIsOfferedFirst) {
  ASSERT_TRUE(Succeeds("ip addr add 192.0.2.5/24 dev near") &&
              Succeeds("ip addr add 198.51.100.7/26 dev far valid_lft 600 preferred_lft 600") &&
              Succeeds("ip route add default via 192.0.2.1 dev near metric 20"));
  ASSERT_THAT(Names(), ElementsAre("near", "far"));
  auto adapters = Adapters();
  EXPECT_STREQ(adapters[0].IpAddressList.IpAddress.String, "192.0.2.5");
  EXPECT_STREQ(adapters[0].GatewayList.IpAddress.String, "192.0.2.1");
  EXPECT_EQ(adapters[0].DhcpEnabled, 0u);
  EXPECT_STREQ(adapters[1].IpAddressList.IpMask.String, "255.255.255.192");
  EXPECT_STREQ(adapters[1].GatewayList.IpAddress.String, "0.0.0.0");
  EXPECT_EQ(adapters[1].DhcpEnabled, 1u);

  ASSERT_TRUE(Succeeds("ip route add default via 198.51.100.65 dev far metric 10 onlink"));
  EXPECT_THAT(Names(), ElementsAre("far", "near"));
  ASSERT_TRUE(Succeeds("ip route del default dev far") &&
              Succeeds("ip route del default dev near") &&
              Succeeds("ip route add default nexthop via 192.0.2.2 dev near"
                       " nexthop via 198.51.100.66 dev far onlink"));
  adapters = Adapters();
  EXPECT_STREQ(adapters[0].GatewayList.IpAddress.String, "198.51.100.66");
  EXPECT_STREQ(adapters[1].GatewayList.IpAddress.String, "192.0.2.2");
}

TEST_F(KernelInterfaces, ADescriptionIsTheAliasElseMadeOfKindAndName) {
  ASSERT_TRUE(Succeeds("ip link set near alias 'Broadband upstairs'"));
  const auto adapters = Adapters();
  EXPECT_STREQ(adapters[0].Description, "Veth (far)");
  EXPECT_STREQ(adapters[1].Description, "Broadband upstairs");
}

TEST_F(KernelInterfaces, ADialledLineIsACardOfItsOwnType) {
  constexpr UINT kPpp = 23;  // as documented for IP_ADAPTER_INFO
  const int line = ::open("/dev/net/tun", O_RDWR | O_CLOEXEC);
  if (line < 0) GTEST_SKIP() << "no tunnels";
  ifreq request{};
  std::strcpy(request.ifr_name, "line");
  request.ifr_flags = IFF_TUN;
  EXPECT_EQ(::ioctl(line, TUNSETIFF, &request), 0) << std::strerror(errno);
  EXPECT_EQ(::ioctl(line, TUNSETLINK, ARPHRD_PPP), 0) << std::strerror(errno);
  EXPECT_THAT(Names(), ElementsAre("far", "near", "line"));
  EXPECT_EQ(Adapters()[2].Type, kPpp);
  ::close(line);
}

TEST_F(KernelInterfaces, PartsOfABridgeComeLastAndLoopbackNever) {
  if (!Succeeds("ip link add bridge type bridge")) GTEST_SKIP() << "no bridges";
  ASSERT_TRUE(Succeeds("ip link set near master bridge"));
  EXPECT_THAT(Names(), ElementsAre("far", "bridge", "near"));
  Succeeds("ip link del bridge");
}

TEST_F(KernelInterfaces, NameServersComeFromTheResolversConfiguration) {
  ASSERT_TRUE(own_namespaces::CoverFile(
      "/etc/resolv.conf",
      "# nameserver 192.0.2.50\nsearch example.org\nnameserver 192.0.2.53\n"
      "nameserver 2001:db8::53\nnameserver  198.51.100.53 # second\nnameserver none\n"));
  ASSERT_TRUE(Succeeds("ip addr add 192.0.2.5/24 dev near") &&
              Succeeds("ip route add default via 192.0.2.1 dev near"));
  EXPECT_THAT(NameServers(::if_nametoindex("near")), ElementsAre("192.0.2.53", "198.51.100.53"));
  EXPECT_THAT(NameServers(::if_nametoindex("far")), ElementsAre(""));
}

}  // namespace
