// The gate as the session object switches, shows and measures it.
#include "session_test.h"

namespace quillgate {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

using GateStateTest = SessionTest;

TEST_F(GateStateTest, TheGateIsOpenFromTheStartAndClosedForAllButAllowedLocalTraffic) {
  EXPECT_TRUE(session_->IsHookAvailable());
  EXPECT_TRUE(session_->IsOnline());
  EXPECT_THAT(hook_->Codes(), ElementsAre(kHookPass));
  EXPECT_TRUE(indicator_.shown);
  EXPECT_EQ(indicator_.tip, L"Quillgate - Internet connection enabled");
  const std::pair<const wchar_t*, DWORD> cases[] = {
      {nullptr, kHookBlockLocal},
      {L"yes", kHookBlockLocal},
      {L"YES", kHookAllowLocal},
      {L"NO", kHookBlockLocal},
  };
  for (const auto& [setting, code] : cases) {
    if (setting != nullptr) settings_.SetSetting(SettingKey::kLocalTrafficAllowed, setting);
    hook_->ClearCodes();
    session_->Disable();
    EXPECT_THAT(hook_->Codes(), ElementsAre(code, kHookBlock));
  }
  EXPECT_FALSE(session_->IsOnline());
  indicator_.icons.resize(3);  // the first change of each kind
  EXPECT_THAT(indicator_.icons,
              ElementsAre(GateIcon::kUndecided, GateIcon::kEnabled, GateIcon::kDisabled));
  EXPECT_EQ(indicator_.tip, L"Quillgate - Internet connection disabled");
}

TEST_F(GateStateTest, WithoutHookAndCardTheTimeIsStillCounted) {
  hook_->FailOpenWith(ERROR_ACCESS_DENIED);
  machine_.Interfaces().Set({});
  session_.reset();
  indicator_.icons.clear();
  MakeSession();
  EXPECT_FALSE(session_->IsHookAvailable());
  EXPECT_EQ(session_->HookError(), ERROR_ACCESS_DENIED);
  EXPECT_TRUE(session_->IsOnline());
  EXPECT_THAT(indicator_.icons, ElementsAre(GateIcon::kUndecided));
  LogOn();
  Pass(5s);
  EXPECT_EQ(session_->SecondsOnline(), 5u);
  EXPECT_EQ(session_->BytesReceived(), 0u);
  logon_.LogOff(1);
  EXPECT_FALSE(session_->IsOnline());
  EXPECT_EQ(Rows(L"ConnLog").size(), 1u);
}

TEST_F(GateStateTest, TheEndOfTheProcessOpensTheGateWithoutADatabaseAndStopsTheDrivers) {
  session_->Disable();
  hook_->ClearCodes();
  database_.DbClose();
  logon_.SetSessionControl(nullptr);
  session_.reset();
  EXPECT_THAT(hook_->Codes(), ElementsAre(kHookPass));
  EXPECT_EQ(::CreateFileW(L"\\\\.\\QGIpHook", 0, 0, nullptr, OPEN_EXISTING, 0, nullptr),
            INVALID_HANDLE_VALUE);
}

TEST_F(GateStateTest, ASessionIsMeasuredBetweenItsOwnStartAndEnd) {
  const auto expect = [this](std::uint64_t seconds, std::uint64_t received, std::uint64_t sent) {
    EXPECT_EQ(session_->SecondsOnline(), seconds);
    EXPECT_EQ(session_->BytesReceived(), received);
    EXPECT_EQ(session_->BytesSent(), sent);
  };
  Count(5000, 100);
  Pass(100s);
  EXPECT_TRUE(session_->IsOnline());
  expect(0, 0, 0);  // nobody is logged on
  LogOn();
  Pass(3725s + 999ms);
  Count(65536, 1000);
  expect(3725, 65536, 1000);
  session_->Disable();
  expect(0, 0, 0);
}

TEST_F(GateStateTest, ACounterThatFallsCountsNothingAndOnePast32BitsIsMeasuredWhole) {
  const std::tuple<std::uint64_t, std::uint64_t, std::uint64_t> cases[] = {
      {5000, 4999, 0},
      {0xFFFF'FFFF, 0x2'0000'0000, 0x1'0000'0001},
      {0x5'0000'0000, 0x6'8000'0000, 0x1'8000'0000},
  };
  for (const auto& [atStart, later, received] : cases) {
    machine_.Interfaces().SetCounters(L"eth0", {.bytesReceived = atStart});
    LogOn();
    EXPECT_EQ(session_->BytesReceived(), 0u);
    machine_.Interfaces().SetCounters(L"eth0", {.bytesReceived = later});
    EXPECT_EQ(session_->BytesReceived(), received) << atStart;
  }
}

TEST_F(GateStateTest, ATickCountThatWrappedIsCountedFromItsWrap) {
  machine_.Time().SetTickMilliseconds(0xFFFF'FFFF - 10'000);
  LogOn();
  Pass(9s);
  EXPECT_EQ(session_->SecondsOnline(), 9u);
  Pass(8s);
  // The tick count is at 6999 now.
  EXPECT_EQ(session_->SecondsOnline(), 6u + 4294967u);
}

TEST_F(GateStateTest, TheAdapterThatTheSettingsNameIsMeasured) {
  machine_.Interfaces().Set(
      {platform::SimulatedCard(2, L"eth0"), platform::SimulatedCard(3, L"eth1")});
  settings_.SetSetting(SettingKey::kAdapter, L"eth1");
  session_->ReloadAdapter();
  LogOn();
  Count(7, 0);
  machine_.Interfaces().Count(L"eth1", 11, 0);
  EXPECT_EQ(session_->BytesReceived(), 11u);
}

}  // namespace
}  // namespace quillgate
