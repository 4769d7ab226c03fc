#include "usage/adapter_list.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <winreg.h>

#include "handles/handle.h"
#include "platform/net/network_cards.h"
#include "platform/testing/simulated_machine.h"

namespace quillgate {
namespace {

using platform::SimulatedCard;
using testing::ElementsAre;

std::vector<std::wstring> ServiceNames() {
  std::vector<std::wstring> names;
  for (const AdapterEntry& each : ListInstalledAdapters())
    names.push_back(each.serviceName);
  return names;
}

class AdapterListTest : public testing::Test {
 protected:
  ~AdapterListTest() override {
    platform::SetKeyProvider(platform::kNetworkCardsPath, platform::NetworkCardKeys);
  }

  // In the registry's file, without a terminator, which the registry does not ask for.
  static void Store(const std::wstring& card, const wchar_t* name, DWORD type,
                    const std::wstring& text) {
    const std::wstring path = std::wstring(platform::kNetworkCardsPath) + L"\\" + card;
    HKEY key = nullptr;
    ASSERT_EQ(::RegCreateKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr,
                                &key, nullptr),
              0);
    const RegistryKey owned(key);
    ASSERT_EQ(::RegSetValueExW(key, name, 0, type, reinterpret_cast<const BYTE*>(text.data()),
                               static_cast<DWORD>(text.size() * sizeof(wchar_t))),
              0);
  }

  platform::SimulatedMachine machine_;
};

TEST_F(AdapterListTest, CardsAreListedInTheirOrder) {
  EXPECT_THAT(ServiceNames(), testing::IsEmpty());
  machine_.Interfaces().Set({SimulatedCard(5, L"second"), SimulatedCard(2, L"first")});
  EXPECT_THAT(ServiceNames(), ElementsAre(L"second", L"first"));
  EXPECT_EQ(AdapterDescription(L"first"), L"Simulated card 2");
  EXPECT_EQ(AdapterDescription(L"FIRST"), L"");
}

TEST_F(AdapterListTest, ATextOfAnotherTypeOrTooLongIsUnknownAndAKeyNameTooLongEndsTheList) {
  // From now on the cards are what the registry's file holds.
  platform::SetKeyProvider(platform::kNetworkCardsPath, {});
  Store(L"1", L"ServiceName", REG_EXPAND_SZ, L"expanded");
  Store(L"1", L"Description", REG_SZ, std::wstring(L"A card\0 with more", 17));
  Store(L"2", L"Other", REG_SZ, L"");
  Store(L"3", L"ServiceName", REG_SZ, std::wstring(256, L's'));
  Store(L"3", L"Description", REG_SZ, std::wstring(257, L'd'));
  Store(L"4 name of 16 ch.", L"Other", REG_SZ, L"");
  Store(L"5", L"Other", REG_SZ, L"");
  std::vector<std::pair<std::wstring, std::wstring>> texts;
  for (const AdapterEntry& each : ListInstalledAdapters())
    texts.emplace_back(each.serviceName, each.description);
  EXPECT_THAT(texts,
              ElementsAre(std::pair(L"Unknown", L"A card"), std::pair(L"Unknown", L"Unknown"),
                          std::pair(std::wstring(256, L's'), L"Unknown")));
}

// The second card's key has another name whenever it is looked at, so it can never be opened.
TEST_F(AdapterListTest, ACardThatCannotBeOpenedStandsAsTheOneBefore) {
  int looks = 0;
  platform::SetKeyProvider(platform::kNetworkCardsPath, [&looks] {
    const auto card = [](const std::wstring& key, const std::wstring& name) {
      return platform::ProvidedKey{key, {{L"ServiceName", name}, {L"Description", name}}};
    };
    return std::vector{card(L"1", L"first"), card(L"2x" + std::to_wstring(++looks), L"never"),
                       card(L"3", L"third")};
  });
  EXPECT_THAT(ServiceNames(), ElementsAre(L"first", L"first", L"third"));
}

TEST_F(AdapterListTest, TheStoredCardIsChosenByItsExactNameElseTheFirstWhichIsStored) {
  Database database;
  Settings settings(database);
  const auto stored = [&] { return settings.GetSetting(SettingKey::kAdapter, L"absent"); };
  machine_.Interfaces().Set({SimulatedCard(3, L"card3"), SimulatedCard(4, L"card4")});
  EXPECT_EQ(ChooseAdapter(settings)->ServiceName(), L"card3");
  EXPECT_EQ(stored(), L"card3");
  settings.SetSetting(SettingKey::kAdapter, L"card4");
  EXPECT_EQ(ChooseAdapter(settings)->InterfaceIndex(), 4u);
  settings.SetSetting(SettingKey::kAdapter, L"CARD4");
  EXPECT_EQ(ChooseAdapter(settings)->ServiceName(), L"card3");
  EXPECT_EQ(stored(), L"card3");
  machine_.Interfaces().Set({});
  EXPECT_EQ(ChooseAdapter(settings), nullptr);
  EXPECT_EQ(stored(), L"card3");
}

}  // namespace
}  // namespace quillgate
