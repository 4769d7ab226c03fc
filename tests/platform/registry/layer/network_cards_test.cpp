// Keys that are made from the machine's interfaces, among stored ones.
#include "platform/registry/layer/test_machine.h"
#include "platform/registry/registry_key.h"

namespace {

constexpr const wchar_t* kCards = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\NetworkCards";
using Names = std::vector<std::wstring>;

TEST(NetworkCards, AreTheMachinesCardsInTheOrderOffered) {
  auto loopback = platform::SimulatedCard(1, L"lo");
  loopback.isCard = false;
  auto card = platform::SimulatedCard(9, L"eth9");
  card.description = L"Nine";
  TestMachine::Get().Interfaces().Set({card, loopback, platform::SimulatedCard(2, L"eth2")});
  ASSERT_EQ(OpenStatus(kCards), 0);
  const Key cards(kCards, KEY_READ);
  EXPECT_EQ(cards.Subkeys(), (Names{L"1", L"2"}));
  const Key first((kCards + std::wstring(L"\\1")).c_str(), KEY_READ);
  EXPECT_EQ(first.Text(L"servicename"), L"eth9");
  EXPECT_EQ(first.Text(L"Description"), L"Nine");
  const Key second((kCards + std::wstring(L"\\2")).c_str(), KEY_READ);
  EXPECT_EQ(second.Text(L"ServiceName"), L"eth2");
  ExpectStatuses({{"delete", ::RegDeleteKeyW(cards.Get(), L"2"), ERROR_ACCESS_DENIED}});

  TestMachine::Get().Interfaces().Set({});
  EXPECT_TRUE(cards.Subkeys().empty());
  ExpectStatuses({{"query", second.Find(L"ServiceName"), ERROR_KEY_DELETED}});
}

TEST(NetworkCards, KeysThatLeadToThemTakeStoredNeighbours) {
  const Key key(L"Software\\Microsoft");
  EXPECT_EQ(key.SetText(L"Name", L"kept"), 0);
  Key{L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Winlogon\\Notify"};
  EXPECT_EQ(key.Text(L"Name"), L"kept");
  EXPECT_EQ(key.Subkeys(), Names{L"Windows NT"});
  const Key version(L"Software\\Microsoft\\Windows NT\\CurrentVersion", KEY_READ);
  EXPECT_EQ(version.Subkeys(), (Names{L"NetworkCards", L"Winlogon"}));
}

}  // namespace
