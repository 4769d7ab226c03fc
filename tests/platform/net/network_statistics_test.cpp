#include <windows.h>

#include <gmock/gmock.h>

#include <ntddndis.h>

#include <cstring>
#include <string>
#include <vector>

#include "platform/testing/simulated_machine.h"

namespace {

HANDLE Open(const std::wstring& name) {
  return ::CreateFileW((L"\\\\.\\" + name).c_str(), 0, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0,
                       nullptr);
}

class NetworkStatistics : public testing::Test {
 protected:
  NetworkStatistics() {
    auto card = platform::SimulatedCard(2, L"eth0");
    card.physicalAddress = {0x00, 0x0C, 0x29, 0x3A, 0x5B, 0x7C};
    card.counters = {0x1234'5678'9ABC, 0xFFFF'FFFF'FFFF'FFF0, 0, 0};
    auto tunnel = platform::SimulatedCard(3, L"tun0");
    tunnel.physicalAddress.clear();
    machine_.Interfaces().Set({card, tunnel});
    device_ = Open(L"eth0");
  }
  ~NetworkStatistics() override { ::CloseHandle(device_); }

  // 0, or the last error.
  DWORD Query(HANDLE device, DWORD objectId, DWORD code = IOCTL_NDIS_QUERY_GLOBAL_STATS,
              DWORD inBytes = 4, DWORD outBytes = 16) {
    returned_ = 99;
    answer_.assign(16, 0xEE);
    const BOOL done = ::DeviceIoControl(device, code, &objectId, inBytes, answer_.data(), outBytes,
                                        &returned_, nullptr);
    return done ? 0 : ::GetLastError();
  }

  std::uint64_t Answered() const {
    std::uint64_t value = 0;
    std::memcpy(&value, answer_.data(), sizeof value);
    return value;
  }

  platform::SimulatedMachine machine_;
  HANDLE device_ = INVALID_HANDLE_VALUE;
  std::vector<BYTE> answer_;
  DWORD returned_ = 0;
};

TEST_F(NetworkStatistics, CountersAreWholeIn64Bits) {
  ASSERT_NE(device_, INVALID_HANDLE_VALUE);
  EXPECT_EQ(Query(device_, OID_GEN_DIRECTED_BYTES_RCV), 0u);
  EXPECT_EQ(returned_, 8u);
  EXPECT_EQ(Answered(), 0x1234'5678'9ABCu);
  EXPECT_EQ(Query(device_, OID_GEN_DIRECTED_BYTES_XMIT), 0u);
  EXPECT_EQ(Answered(), 0xFFFF'FFFF'FFFF'FFF0u);
  machine_.Interfaces().Count(L"eth0", 4, 0);
  EXPECT_EQ(Query(device_, OID_GEN_DIRECTED_BYTES_RCV), 0u);
  EXPECT_EQ(Answered(), 0x1234'5678'9AC0u);
}

TEST_F(NetworkStatistics, TheAddressHasItsOwnLength) {
  EXPECT_EQ(Query(device_, OID_802_3_CURRENT_ADDRESS), 0u);
  EXPECT_EQ(returned_, 6u);
  EXPECT_EQ(std::vector<BYTE>(answer_.begin(), answer_.begin() + 7),
            (std::vector<BYTE>{0x00, 0x0C, 0x29, 0x3A, 0x5B, 0x7C, 0xEE}));
}

TEST_F(NetworkStatistics, RefusalsAreThoseOfADriver) {
  const struct {
    DWORD objectId;
    DWORD code;
    DWORD inBytes;
    DWORD outBytes;
    DWORD error;
  } kCases[] = {
      {0x00010106, IOCTL_NDIS_QUERY_GLOBAL_STATS, 4, 16, ERROR_NOT_SUPPORTED},
      {OID_GEN_DIRECTED_BYTES_RCV, IOCTL_NDIS_QUERY_GLOBAL_STATS + 4, 4, 16,
       ERROR_INVALID_FUNCTION},
      {OID_GEN_DIRECTED_BYTES_RCV, IOCTL_NDIS_QUERY_GLOBAL_STATS, 3, 16, ERROR_INVALID_PARAMETER},
      {OID_GEN_DIRECTED_BYTES_RCV, IOCTL_NDIS_QUERY_GLOBAL_STATS, 4, 7, ERROR_INSUFFICIENT_BUFFER},
      {OID_802_3_CURRENT_ADDRESS, IOCTL_NDIS_QUERY_GLOBAL_STATS, 4, 5, ERROR_INSUFFICIENT_BUFFER},
  };
  for (const auto& each : kCases) {
    EXPECT_EQ(Query(device_, each.objectId, each.code, each.inBytes, each.outBytes), each.error);
    EXPECT_EQ(returned_, 0u);
    EXPECT_THAT(answer_, testing::Each(0xEE));
  }
}

TEST_F(NetworkStatistics, ATunnelCountsButHasNoAddress) {
  const HANDLE tunnel = Open(L"tun0");
  ASSERT_NE(tunnel, INVALID_HANDLE_VALUE);
  EXPECT_EQ(Query(tunnel, OID_802_3_CURRENT_ADDRESS), ERROR_NOT_SUPPORTED);
  EXPECT_EQ(Query(tunnel, OID_GEN_DIRECTED_BYTES_RCV), 0u);
  ::CloseHandle(tunnel);
}

TEST_F(NetworkStatistics, AnInterfaceThatIsNotThereHasNoDevice) {
  EXPECT_EQ(Open(L"eth1"), INVALID_HANDLE_VALUE);
  EXPECT_EQ(::GetLastError(), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(Open(L""), INVALID_HANDLE_VALUE);
}

TEST_F(NetworkStatistics, AnOpenDeviceWhoseInterfaceHasGoneSaysSo) {
  machine_.Interfaces().Set({});
  EXPECT_EQ(Query(device_, OID_GEN_DIRECTED_BYTES_RCV), ERROR_DEV_NOT_EXIST);
  EXPECT_EQ(Query(device_, OID_802_3_CURRENT_ADDRESS), ERROR_DEV_NOT_EXIST);
}

std::wstring TextValue(const std::wstring& key, const wchar_t* value) {
  HKEY opened = nullptr;
  const std::wstring path =
      L"Software\\Microsoft\\Windows NT\\CurrentVersion\\NetworkCards\\" + key;
  if (::RegOpenKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, KEY_READ, &opened) != 0) return L"-";
  wchar_t text[64] = {};
  DWORD bytes = sizeof text;
  DWORD type = 0;
  ::RegQueryValueExW(opened, value, nullptr, &type, reinterpret_cast<BYTE*>(text), &bytes);
  ::RegCloseKey(opened);
  return type == REG_SZ ? text : L"";
}

TEST(NetworkCards, TheRegistryListsCardsOnlyInTheOrderOffered) {
  platform::SimulatedMachine machine;
  auto loopback = platform::SimulatedCard(1, L"lo");
  loopback.isCard = false;
  auto card = platform::SimulatedCard(9, L"eth9");
  card.description = L"Nine";
  machine.Interfaces().Set({card, loopback, platform::SimulatedCard(2, L"eth2")});
  EXPECT_EQ(TextValue(L"1", L"ServiceName"), L"eth9");
  EXPECT_EQ(TextValue(L"1", L"Description"), L"Nine");
  EXPECT_EQ(TextValue(L"2", L"ServiceName"), L"eth2");
  EXPECT_EQ(TextValue(L"3", L"ServiceName"), L"-");
}

}  // namespace
