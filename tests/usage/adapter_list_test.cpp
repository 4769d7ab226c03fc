#include "usage/adapter_list.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <winreg.h>

#include "handles/handle.h"
#include "platform/net/network_devices.h"
#include "platform/testing/simulated_machine.h"

namespace quillgate {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

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

  // The cards are what the registry's file holds, from now on.
  static void UseStoredKeys() { platform::SetKeyProvider(platform::kNetworkCardsPath, {}); }

  static RegistryKey StoreCard(const std::wstring& key) {
    HKEY card = nullptr;
    const std::wstring path = std::wstring(platform::kNetworkCardsPath) + L"\\" + key;
    EXPECT_EQ(::RegCreateKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr,
                                &card, nullptr),
              0);
    return RegistryKey(card);
  }

  // Without a terminator, which the registry does not ask for.
  static void Store(const RegistryKey& card, const wchar_t* name, DWORD type,
                    const std::wstring& text) {
    EXPECT_EQ(
        ::RegSetValueExW(card.Get(), name, 0, type, reinterpret_cast<const BYTE*>(text.data()),
                         static_cast<DWORD>(text.size() * sizeof(wchar_t))),
        0);
  }

  platform::SimulatedMachine machine_;
};

TEST_F(AdapterListTest, CardsAreListedInTheirOrder) {
  EXPECT_THAT(ServiceNames(), IsEmpty());
  machine_.Interfaces().Set(
      {platform::SimulatedCard(5, L"second"), platform::SimulatedCard(2, L"first")});
  EXPECT_THAT(ServiceNames(), ElementsAre(L"second", L"first"));
  EXPECT_EQ(AdapterDescription(L"first"), L"Simulated card 2");
  EXPECT_EQ(AdapterDescription(L"FIRST"), L"");
}

TEST_F(AdapterListTest, OnlyTextsOfTheRightTypeAreTaken) {
  UseStoredKeys();
  const RegistryKey card = StoreCard(L"1");
  Store(card, L"ServiceName", REG_EXPAND_SZ, L"expanded");
  Store(card, L"Description", REG_SZ, std::wstring(L"A card\0 with more", 17));
  StoreCard(L"2");
  const auto adapters = ListInstalledAdapters();
  ASSERT_EQ(adapters.size(), 2u);
  EXPECT_EQ(adapters[0].serviceName, L"Unknown");
  EXPECT_EQ(adapters[0].description, L"A card");
  EXPECT_EQ(adapters[1].serviceName, L"Unknown");
  EXPECT_EQ(adapters[1].description, L"Unknown");
}

TEST_F(AdapterListTest, ATextThatDoesNotFitIsUnknown) {
  UseStoredKeys();
  const RegistryKey card = StoreCard(L"1");
  Store(card, L"ServiceName", REG_SZ, std::wstring(256, L's'));
  Store(card, L"Description", REG_SZ, std::wstring(257, L'd'));
  const auto adapters = ListInstalledAdapters();
  ASSERT_EQ(adapters.size(), 1u);
  EXPECT_EQ(adapters[0].serviceName, std::wstring(256, L's'));
  EXPECT_EQ(adapters[0].description, L"Unknown");
}

TEST_F(AdapterListTest, AKeyNameThatDoesNotFitEndsTheList) {
  UseStoredKeys();
  StoreCard(L"1");
  StoreCard(L"2 name of 16 ch.");
  StoreCard(L"3");
  EXPECT_EQ(ListInstalledAdapters().size(), 1u);
}

// The second card's key has another name whenever it is looked at, so it can never be opened.
TEST_F(AdapterListTest, ACardThatCannotBeOpenedStandsAsTheOneBefore) {
  int looks = 0;
  platform::SetKeyProvider(platform::kNetworkCardsPath, [&looks] {
    const auto texts = [](const std::wstring& name) {
      return std::vector<std::pair<std::wstring, std::wstring>>{{L"ServiceName", name},
                                                                {L"Description", name}};
    };
    return std::vector<platform::ProvidedKey>{{L"1", texts(L"first")},
                                              {L"2x" + std::to_wstring(++looks), texts(L"never")},
                                              {L"3", texts(L"third")}};
  });
  EXPECT_THAT(ServiceNames(), ElementsAre(L"first", L"first", L"third"));
}

class ChooseAdapterTest : public AdapterListTest {
 protected:
  ChooseAdapterTest() {
    machine_.Interfaces().Set(
        {platform::SimulatedCard(3, L"card3"), platform::SimulatedCard(4, L"card4")});
  }

  std::wstring Stored() { return settings_.GetSetting(SettingKey::kAdapter, L"absent"); }

  Database database_;
  Settings settings_{database_};
};

TEST_F(ChooseAdapterTest, TheFirstCardIsChosenAndStored) {
  EXPECT_EQ(ChooseAdapter(settings_)->ServiceName(), L"card3");
  EXPECT_EQ(Stored(), L"card3");
}

TEST_F(ChooseAdapterTest, TheStoredCardIsChosenByItsExactName) {
  settings_.SetSetting(SettingKey::kAdapter, L"card4");
  EXPECT_EQ(ChooseAdapter(settings_)->InterfaceIndex(), 4u);
  settings_.SetSetting(SettingKey::kAdapter, L"CARD4");
  EXPECT_EQ(ChooseAdapter(settings_)->ServiceName(), L"card3");
  EXPECT_EQ(Stored(), L"card3");
}

TEST_F(ChooseAdapterTest, AMachineWithoutCardsHasNoChoiceAndKeepsTheStoredOne) {
  settings_.SetSetting(SettingKey::kAdapter, L"card4");
  machine_.Interfaces().Set({});
  EXPECT_EQ(ChooseAdapter(settings_), nullptr);
  EXPECT_EQ(Stored(), L"card4");
}

}  // namespace
}  // namespace quillgate
