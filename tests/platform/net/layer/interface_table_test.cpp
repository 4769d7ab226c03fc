#include <windows.h>

#include <gmock/gmock.h>

#include <vector>

#include "platform/net/counter_base.h"
#include "platform/net/layer/interface_queries.h"
#include "platform/testing/simulated_machine.h"

namespace {

using platform::SimulatedCard;
using testing::ElementsAre;

class InterfaceTable : public testing::Test {
 protected:
  std::vector<MIB_IFROW> Table(BOOL order) const {
    ULONG bytes = 0;
    EXPECT_EQ(::GetIfTable(nullptr, &bytes, order), ERROR_INSUFFICIENT_BUFFER);
    std::vector<MIB_IFROW> memory(bytes / sizeof(MIB_IFROW) + 2);
    auto* const table = reinterpret_cast<MIB_IFTABLE*>(memory.data());
    EXPECT_EQ(::GetIfTable(table, &bytes, order), NO_ERROR);
    return {table->table, table->table + table->dwNumEntries};
  }

  platform::SimulatedMachine machine_;
};

TEST_F(InterfaceTable, RowsAreSortedByIndexOnlyWhenAsked) {
  EXPECT_THAT(Table(TRUE), testing::IsEmpty());
  machine_.Interfaces().Set({SimulatedCard(7, L"eth7"), SimulatedCard(3, L"eth3")});
  const auto index = [](DWORD number) { return testing::Field(&MIB_IFROW::dwIndex, number); };
  EXPECT_THAT(Table(FALSE), ElementsAre(index(7), index(3)));
  EXPECT_THAT(Table(TRUE), ElementsAre(index(3), index(7)));
}

TEST_F(InterfaceTable, ABufferThatIsOneByteShortStaysUntouched) {
  machine_.Interfaces().Set({SimulatedCard(1, L"a"), SimulatedCard(2, L"b")});
  ULONG needed = 0;
  ::GetIfTable(nullptr, &needed, TRUE);
  std::vector<BYTE> memory(needed + sizeof(DWORD), 0xEE);
  ULONG bytes = needed - 1;
  EXPECT_EQ(::GetIfTable(reinterpret_cast<MIB_IFTABLE*>(memory.data()), &bytes, TRUE),
            ERROR_INSUFFICIENT_BUFFER);
  EXPECT_EQ(bytes, needed);
  EXPECT_THAT(memory, testing::Each(0xEE));
  EXPECT_EQ(::GetIfTable(nullptr, nullptr, TRUE), ERROR_INVALID_PARAMETER);
}

TEST_F(InterfaceTable, ARowTellsTheAddressAndTheLow32BitsOfTheCountersOfItsIndex) {
  auto card = SimulatedCard(4, L"eth4");
  card.physicalAddress = {0x00, 0x0C, 0x29, 0x3A, 0x5B, 0x7C};
  card.counters = {0x1'0000'0005, 0x2'FFFF'FFFE, 17, 18};
  card.bitsPerSecond = 10'000'000'000;
  machine_.Interfaces().Set({card});
  MIB_IFROW row{};
  row.dwIndex = 4;
  ASSERT_EQ(::GetIfEntry(&row), NO_ERROR);
  EXPECT_EQ(row.dwInOctets, 5u);
  EXPECT_EQ(row.dwOutOctets, 0xFFFFFFFEu);
  EXPECT_EQ(row.dwInUcastPkts, 17u);
  EXPECT_EQ(row.dwSpeed, 0xFFFFFFFFu);  // more than the field can tell
  EXPECT_EQ(row.dwOperStatus, 5u);
  EXPECT_EQ(row.dwPhysAddrLen, 6u);
  EXPECT_EQ(row.bPhysAddr[5], 0x7C);
  EXPECT_STREQ(row.wszName, L"eth4");
  row.dwIndex = 5;
  EXPECT_EQ(::GetIfEntry(&row), ERROR_INVALID_DATA);
  EXPECT_EQ(::GetIfEntry(nullptr), ERROR_INVALID_PARAMETER);
}

TEST_F(InterfaceTable, AnAdapterChainHoldsTheCardsWithAllOfTheirAddresses) {
  auto first = SimulatedCard(2, L"eth0");
  first.description = L"Fj\u00e4rr";
  first.addresses = {{"192.0.2.5", "255.255.255.0"}, {"198.51.100.7", "255.255.0.0"}};
  first.gateways = {"192.0.2.1", "192.0.2.2", "192.0.2.3"};
  first.dhcp = true;
  auto loopback = SimulatedCard(1, L"lo");
  loopback.isCard = false;
  auto second = SimulatedCard(3, L"eth1");
  second.addresses = {{"203.0.113.9", "255.255.255.255"}};
  machine_.Interfaces().Set({first, loopback, second});

  const auto adapters = Adapters();
  const IP_ADAPTER_INFO* const chain = adapters.data();
  EXPECT_STREQ(chain->AdapterName, "eth0");
  EXPECT_STREQ(chain->Description, "Fj\xC3\xA4rr");
  EXPECT_EQ(chain->Index, 2u);
  EXPECT_EQ(chain->AddressLength, 6u);
  EXPECT_EQ(chain->DhcpEnabled, 1u);
  EXPECT_EQ(chain->CurrentIpAddress, &chain->IpAddressList);
  EXPECT_THAT(Addresses(chain->IpAddressList), ElementsAre("192.0.2.5", "198.51.100.7"));
  EXPECT_STREQ(chain->IpAddressList.Next->IpMask.String, "255.255.0.0");
  EXPECT_THAT(Addresses(chain->GatewayList), ElementsAre("192.0.2.1", "192.0.2.2", "192.0.2.3"));
  ASSERT_NE(chain->Next, nullptr);
  EXPECT_STREQ(chain->Next->AdapterName, "eth1");
  EXPECT_THAT(Addresses(chain->Next->IpAddressList), ElementsAre("203.0.113.9"));
  EXPECT_EQ(chain->Next->Next, nullptr);
}

TEST_F(InterfaceTable, AnAdapterWithoutAddressesHasAZeroOneAndNoCardNoData) {
  machine_.Interfaces().Set({SimulatedCard(2, L"eth0")});
  const auto adapters = Adapters();
  EXPECT_EQ(adapters[0].CurrentIpAddress, nullptr);
  EXPECT_THAT(Addresses(adapters[0].IpAddressList), ElementsAre("0.0.0.0"));
  EXPECT_THAT(Addresses(adapters[0].GatewayList), ElementsAre("0.0.0.0"));
  auto loopback = SimulatedCard(1, L"lo");
  loopback.isCard = false;
  machine_.Interfaces().Set({loopback});
  ULONG bytes = 0;
  EXPECT_EQ(::GetAdaptersInfo(nullptr, &bytes), ERROR_NO_DATA);
  EXPECT_EQ(bytes, 0u);
}

TEST_F(InterfaceTable, NameServersBelongToTheAdapterThatIsAskedFor) {
  auto card = SimulatedCard(2, L"eth0");
  card.nameServers = {"192.0.2.53", "198.51.100.53"};
  machine_.Interfaces().Set({card, SimulatedCard(3, L"eth1")});
  EXPECT_THAT(NameServers(2), ElementsAre("192.0.2.53", "198.51.100.53"));
  EXPECT_THAT(NameServers(3), ElementsAre(""));
  IP_PER_ADAPTER_INFO info{};
  ULONG bytes = sizeof info;
  EXPECT_EQ(::GetPerAdapterInfo(9, &info, &bytes), ERROR_INVALID_PARAMETER);
}

TEST(CounterBase, CountersNeverFallAndNothingCountsTwice) {
  struct Step {
    char what;  // read, came, went, missed
    std::uint32_t index;
    std::uint64_t received, total;  // as the link tells it, and what has been counted then
  };
  const std::vector<Step> cases[] = {
      {{'r', 1, 100, 100}, {'r', 1, 30, 130}, {'c', 1, 40, 140}},    // is reset in its place
      {{'r', 1, 100, 100}, {'r', 2, 300, 400}, {'r', 2, 310, 410}},  // another, of which none told
      {{'r', 1, 100, 100}, {'w', 1, 120, 120}, {'c', 2, 0, 120}, {'r', 2, 50, 170}},
      {{'r', 1, 100, 100}, {'w', 1, 120, 120}, {'c', 1, 500, 120}, {'r', 1, 510, 130}},  // lent
      {{'r', 1, 100, 100}, {'c', 2, 9000, 100}, {'r', 2, 9010, 110}},  // names are swapped
      {{'r', 1, 100, 100}, {'m', 1, 0, 100}, {'m', 1, 0, 100}, {'r', 1, 150, 250}},
      {{'c', 1, 50, 50}, {'w', 1, 60, 60}, {'r', 1, 10, 10}},  // nobody asked before
  };
  for (const std::vector<Step>& steps : cases) {
    platform::CounterBase counted;
    for (const Step& step : steps) {
      const platform::LinkReading reading{L"eth0", step.index, {step.received, 7, 0, 0}};
      if (step.what == 'r') counted.Read(reading);
      if (step.what == 'c') counted.Came(reading);
      if (step.what == 'w') counted.Went(reading);
      if (step.what == 'm') counted.Missed(reading.name);
      EXPECT_EQ(counted.Latest(reading).bytesReceived, step.total)
          << "case " << &steps - cases << ", step " << &step - steps.data();
    }
  }
  platform::CounterBase counted;
  counted.Read({L"eth0", 1, {100, 7, 0, 0}});
  EXPECT_EQ(counted.Read({L"eth0", 1, {30, 8, 0, 0}}).bytesSent, 8u) << "it has not fallen";
}

}  // namespace
