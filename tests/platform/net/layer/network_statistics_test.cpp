#include <windows.h>

#include <gmock/gmock.h>

#include <ntddndis.h>

#include <cstring>
#include <vector>

#include "platform/kit/failing_call.h"
#include "platform/net/layer/interface_queries.h"
#include "platform/testing/simulated_machine.h"

namespace {

class NetworkStatistics : public testing::Test {
 protected:
  NetworkStatistics() {
    auto card = platform::SimulatedCard(2, L"eth0");
    card.physicalAddress = {0x00, 0x0C, 0x29, 0x3A, 0x5B, 0x7C};
    card.counters = {0x1234'5678'9ABC, 0xFFFF'FFFF'FFFF'FFF0, 0, 0};
    auto tunnel = platform::SimulatedCard(3, L"tun0");
    tunnel.physicalAddress.clear();
    machine_.Interfaces().Set({card, tunnel});
    device_ = OpenInterface(L"eth0");
  }
  ~NetworkStatistics() override { ::CloseHandle(device_); }

  // 0, or the last error.
  DWORD Query(HANDLE device, DWORD objectId, DWORD code = IOCTL_NDIS_QUERY_GLOBAL_STATS,
              DWORD inBytes = 4, DWORD outBytes = 16) {
    returned_ = 99;
    answer_.assign(16, 0xEE);
    return ErrorOf(::DeviceIoControl(device, code, &objectId, inBytes, answer_.data(), outBytes,
                                     &returned_, nullptr));
  }
  std::uint64_t Counter(DWORD objectId) {
    EXPECT_EQ(Query(device_, objectId), 0u);
    EXPECT_EQ(returned_, 8u);
    std::uint64_t value = 0;
    std::memcpy(&value, answer_.data(), sizeof value);
    return value;
  }

  platform::SimulatedMachine machine_;
  HANDLE device_ = INVALID_HANDLE_VALUE;
  std::vector<BYTE> answer_;
  DWORD returned_ = 0;
};

TEST_F(NetworkStatistics, CountersAreWholeIn64BitsAndTheAddressHasItsOwnLength) {
  EXPECT_EQ(Counter(OID_GEN_DIRECTED_BYTES_RCV), 0x1234'5678'9ABCu);
  EXPECT_EQ(Counter(OID_GEN_DIRECTED_BYTES_XMIT), 0xFFFF'FFFF'FFFF'FFF0u);
  machine_.Interfaces().Count(L"eth0", 4, 0);
  EXPECT_EQ(Counter(OID_GEN_DIRECTED_BYTES_RCV), 0x1234'5678'9AC0u);
  EXPECT_EQ(Query(device_, OID_802_3_CURRENT_ADDRESS), 0u);
  EXPECT_EQ(returned_, 6u);
  answer_.resize(7);
  EXPECT_EQ(answer_, (std::vector<BYTE>{0x00, 0x0C, 0x29, 0x3A, 0x5B, 0x7C, 0xEE}));
}

TEST_F(NetworkStatistics, InvalidQueriesFailAsOfADriverAndAnswerNothing) {
  constexpr DWORD kCode = IOCTL_NDIS_QUERY_GLOBAL_STATS;
  const HANDLE tunnel = OpenInterface(L"tun0");
  EXPECT_EQ(Query(tunnel, OID_GEN_DIRECTED_BYTES_RCV), 0u);
  const struct {
    HANDLE device;
    DWORD objectId, code, inBytes, outBytes, error;
  } kCases[] = {
      {device_, 0x00010106, kCode, 4, 16, ERROR_NOT_SUPPORTED},
      {device_, OID_GEN_DIRECTED_BYTES_RCV, kCode + 4, 4, 16, ERROR_INVALID_FUNCTION},
      {device_, OID_GEN_DIRECTED_BYTES_RCV, kCode, 3, 16, ERROR_INVALID_PARAMETER},
      {device_, OID_GEN_DIRECTED_BYTES_RCV, kCode, 4, 7, ERROR_INSUFFICIENT_BUFFER},
      {device_, OID_802_3_CURRENT_ADDRESS, kCode, 4, 5, ERROR_INSUFFICIENT_BUFFER},
      {tunnel, OID_802_3_CURRENT_ADDRESS, kCode, 4, 16, ERROR_NOT_SUPPORTED},
  };
  for (const auto& each : kCases) {
    EXPECT_EQ(Query(each.device, each.objectId, each.code, each.inBytes, each.outBytes), each.error)
        << (&each - kCases);
    EXPECT_EQ(returned_, 0u);
    EXPECT_THAT(answer_, testing::Each(0xEE));
  }
  ::CloseHandle(tunnel);
}

TEST_F(NetworkStatistics, AnInterfaceThatIsMissingOrGoneHasNoDevice) {
  EXPECT_EQ(ErrorOf(OpenInterface(L"eth1") != INVALID_HANDLE_VALUE), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(OpenInterface(L""), INVALID_HANDLE_VALUE);
  machine_.Interfaces().Set({});
  EXPECT_EQ(Query(device_, OID_GEN_DIRECTED_BYTES_RCV), ERROR_DEV_NOT_EXIST);
  EXPECT_EQ(Query(device_, OID_802_3_CURRENT_ADDRESS), ERROR_DEV_NOT_EXIST);
}

}  // namespace
