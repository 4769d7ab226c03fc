#include "usage/adapter_properties.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "platform/testing/simulated_machine.h"

namespace quillgate {
namespace {

using testing::ElementsAre;

TEST(AdapterProperties, TooLittleRoomFillsNothingAndWithoutAdaptersNoneIsNeeded) {
  platform::SimulatedMachine machine;
  DWORD required = 99;
  EXPECT_EQ(EnumerateAdapterProperties(nullptr, 0, &required), NO_ERROR);
  EXPECT_EQ(required, 0u);
  machine.Interfaces().Set(
      {platform::SimulatedCard(3, L"card3"), platform::SimulatedCard(4, L"card4")});
  AdapterProperties adapters[2];
  EXPECT_EQ(EnumerateAdapterProperties(adapters, 423, &required), ERROR_INSUFFICIENT_BUFFER);
  EXPECT_EQ(required, 424u);
  EXPECT_EQ(adapters[0].name, L"");
}

TEST(AdapterProperties, EveryListIsReadToItsEndAndAMissingAddressIsZeros) {
  platform::NetworkInterface given = platform::SimulatedCard(3, L"card3");
  given.description = L"K\u00F6rt";
  given.dhcp = true;
  given.addresses = {{"192.0.2.7", "255.255.255.0"}, {"198.51.100.1", "255.255.0.0"}};
  given.gateways = {"192.0.2.1", "192.0.2.2"};
  given.nameServers = {"192.0.2.53", "192.0.2.54"};
  platform::SimulatedMachine machine;
  machine.Interfaces().Set({given, platform::SimulatedCard(4, L"card4")});
  DWORD required = 424;
  std::vector<AdapterProperties> adapters(2);
  ASSERT_EQ(EnumerateAdapterProperties(adapters.data(), required, &required), NO_ERROR);
  std::ranges::sort(adapters, {}, &AdapterProperties::index);
  const AdapterProperties& card = adapters[0];
  EXPECT_EQ(card.index, 3u);
  EXPECT_EQ(card.description, L"K\u00F6rt");
  EXPECT_EQ(card.type, 6u);
  EXPECT_EQ(card.dhcpEnabled, 1u);
  ASSERT_EQ(card.addresses.size(), 2u);
  EXPECT_EQ(card.addresses[0].address, L"192.0.2.7");
  EXPECT_EQ(card.addresses[1].mask, L"255.255.0.0");
  EXPECT_THAT(card.gateways, ElementsAre(L"192.0.2.1", L"192.0.2.2"));
  EXPECT_THAT(card.nameServers, ElementsAre(L"192.0.2.53", L"192.0.2.54"));
  EXPECT_EQ(adapters[1].current.address, L"0.0.0.0");
  EXPECT_EQ(adapters[1].current.mask, L"0.0.0.0");
}

}  // namespace
}  // namespace quillgate
