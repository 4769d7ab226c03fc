#include "usage/network_adapter.h"

#include <gtest/gtest.h>

#include <ntddndis.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <map>

#include "platform/kernel/encoding.h"
#include "platform/kernel/handle_table.h"
#include "platform/testing/simulated_machine.h"
#include "usage/counter_extension.h"

namespace quillgate {
namespace {

// A network driver's device that answers the objects that the test gives it.
struct FakeDriver final : platform::Device {
  DWORD Open(DWORD) override {
    ++opened;
    return NO_ERROR;
  }
  DWORD Control(DWORD code, std::span<const std::byte> in, std::span<std::byte> out,
                DWORD& returned) override {
    DWORD objectId = 0;
    if (code != IOCTL_NDIS_QUERY_GLOBAL_STATS || in.size() != sizeof(objectId))
      return ERROR_INVALID_PARAMETER;
    std::memcpy(&objectId, in.data(), sizeof(objectId));
    const auto found = objects.find(objectId);
    if (error != NO_ERROR) return error;
    if (found == objects.end()) return ERROR_NOT_SUPPORTED;
    const std::vector<BYTE>& bytes = found->second;
    std::memcpy(out.data(), bytes.data(), std::min(out.size(), bytes.size()));
    returned = static_cast<DWORD>(bytes.size());
    return NO_ERROR;
  }

  std::map<DWORD, std::vector<BYTE>> objects;
  DWORD error = NO_ERROR;
  std::atomic<int> opened = 0;
};

// Each test's card has a name of its own: devices stay open for the life of the process.
class NetworkAdapterTest : public testing::Test {
 protected:
  NetworkAdapterTest()
      : name_(platform::Wide(testing::UnitTest::GetInstance()->current_test_info()->name())),
        card_(platform::SimulatedCard(7, name_)) {
    machine_.Interfaces().Set({platform::SimulatedCard(2, L"other"), card_});
  }
  ~NetworkAdapterTest() override { platform::UnregisterDevice(name_); }

  // From now on the driver answers for the card's device.
  std::shared_ptr<FakeDriver> ReplaceDriver() {
    platform::UnregisterDevice(name_);
    auto driver = std::make_shared<FakeDriver>();
    driver->objects[OID_802_3_CURRENT_ADDRESS] = card_.physicalAddress;
    EXPECT_TRUE(platform::RegisterDevice(name_, driver));
    return driver;
  }

  platform::SimulatedMachine machine_;
  std::wstring name_;
  platform::NetworkInterface card_;
};

TEST_F(NetworkAdapterTest, TheMacAddressOfTheNamedCardFindsTheInterface) {
  NetworkAdapter adapter(name_);
  EXPECT_EQ(adapter.InterfaceIndex(), 7u);
  EXPECT_EQ(adapter.MacAddressText(), L"02-00-5E-10-00-07");
  adapter.SetServiceName(L"other");
  EXPECT_EQ(adapter.InterfaceIndex(), 2u);
  for (const wchar_t* name : {L"no such card", L""}) {
    adapter.SetServiceName(name);
    EXPECT_EQ(adapter.InterfaceIndex(), NetworkAdapter::kUnknownIndex);
    EXPECT_EQ(adapter.MacAddressText(), L"");
    EXPECT_EQ(adapter.BytesSent(), 0u);
    EXPECT_EQ(adapter.BytesReceived(), 0u);
  }
}

TEST_F(NetworkAdapterTest, AMacAddressThatIsInNoRowOrTooLongFindsNothing) {
  const auto driver = ReplaceDriver();
  for (const std::vector<BYTE>& address :
       {std::vector<BYTE>{1, 2, 3, 4, 5, 6}, std::vector<BYTE>(16, 0), std::vector<BYTE>{}}) {
    driver->objects[OID_802_3_CURRENT_ADDRESS] = address;
    EXPECT_EQ(NetworkAdapter(name_).InterfaceIndex(), NetworkAdapter::kUnknownIndex);
  }
}

TEST_F(NetworkAdapterTest, TheDriversCounterIsTakenAsItStands) {
  const auto driver = ReplaceDriver();
  const NetworkAdapter adapter(name_);
  machine_.Interfaces().SetCounters(name_, {.bytesReceived = 1, .bytesSent = 1});
  driver->objects[OID_GEN_DIRECTED_BYTES_XMIT] = {0xFE, 0xFF, 0xFF, 0xFF, 0x01, 0, 0, 0x80};
  driver->objects[OID_GEN_DIRECTED_BYTES_RCV] = {0x01, 0x02, 0x03, 0xF4};
  EXPECT_EQ(adapter.BytesSent(), 0x80000001FFFFFFFEu);
  EXPECT_EQ(adapter.BytesReceived(), 0xF4030201u);
  driver->objects[OID_GEN_DIRECTED_BYTES_RCV] = {0x05, 0, 0, 0};
  EXPECT_EQ(adapter.BytesReceived(), 5u);
}

TEST_F(NetworkAdapterTest, ACounterOfAnotherSizeComesFromTheInterfaceTableWithItsWraps) {
  const auto driver = ReplaceDriver();
  driver->objects[OID_GEN_DIRECTED_BYTES_RCV] = std::vector<BYTE>(16, 0xFF);
  const NetworkAdapter adapter(name_);
  machine_.Interfaces().SetCounters(name_, {.bytesReceived = 500, .bytesSent = 4294967000u});
  const std::uint64_t sent = adapter.BytesSent();
  const std::uint64_t received = adapter.BytesReceived();
  machine_.Interfaces().SetCounters(name_, {.bytesReceived = 600, .bytesSent = 100});
  EXPECT_EQ(adapter.BytesSent() - sent, 100 + 4294967295u - 4294967000u);
  EXPECT_EQ(adapter.BytesReceived() - received, 100u);
  machine_.Interfaces().Set({});
  EXPECT_EQ(adapter.BytesSent(), 0u) << "the interface has gone";
}

TEST_F(NetworkAdapterTest, AFailedQueryTellsItsErrorAndNoBytes) {
  const auto driver = ReplaceDriver();
  const std::pair<std::wstring, DWORD> cases[] = {{name_, ERROR_NOT_SUPPORTED},
                                                  {L"no such card", ERROR_FILE_NOT_FOUND}};
  for (const auto& [name, error] : cases) {
    BYTE buffer[16];
    DWORD returned = 99;
    EXPECT_EQ(NetworkAdapter(name).QueryNdis(0x12345678, buffer, sizeof(buffer), &returned), error);
    EXPECT_EQ(returned, 0u);
  }
}

TEST_F(NetworkAdapterTest, ManyReadingsUseOneHandleAlsoOfADriverThatCameBack) {
  const auto driver = ReplaceDriver();
  const NetworkAdapter first(name_);
  const std::size_t handles = platform::Handles().Count();
  const NetworkAdapter second(name_);
  for (int count = 0; count < 100; ++count) {
    first.BytesSent();
    second.BytesReceived();
    first.MacAddressText();
  }
  EXPECT_EQ(driver->opened, 1);
  driver->error = ERROR_DEVICE_NOT_CONNECTED;
  const auto back = ReplaceDriver();
  back->objects[OID_GEN_DIRECTED_BYTES_XMIT] = {42, 0, 0, 0};
  EXPECT_EQ(first.BytesSent(), 42u);
  EXPECT_EQ(second.BytesSent(), 42u);
  EXPECT_EQ(back->opened, 1);
  EXPECT_EQ(platform::Handles().Count(), handles);
}

TEST(CounterExtensionTest, AWrapCountsOneLessThanTheRangeOfTheCounter) {
  CounterExtension extension;
  EXPECT_EQ(extension.Extend(4294967000u), 4294967000u);
  EXPECT_EQ(extension.Extend(100), 4294967395u);
  EXPECT_EQ(extension.Extend(100), 4294967395u);
  EXPECT_EQ(extension.Extend(99), 99 + 2 * std::uint64_t{4294967295u});
  // The directions do not mix.
  const std::uint64_t received = ReceivedBytesExtension().Extend(1000);
  SentBytesExtension().Extend(2000);
  SentBytesExtension().Extend(1);
  EXPECT_EQ(ReceivedBytesExtension().Extend(1001), received + 1);
}

}  // namespace
}  // namespace quillgate
