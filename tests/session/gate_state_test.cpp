// The gate as the session object switches, shows and measures it.
#include "session_test.h"

namespace quillgate {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class GateStateTest : public SessionTest {};

TEST_F(GateStateTest, TheGateIsOpenFromTheStartAndShownSo) {
  EXPECT_TRUE(session_->IsHookAvailable());
  EXPECT_TRUE(session_->IsOnline());
  EXPECT_THAT(hook_->Codes(), ElementsAre(kEnableCode));
  EXPECT_THAT(indicator_.icons, ElementsAre(GateIcon::kUndecided, GateIcon::kEnabled));
  EXPECT_TRUE(indicator_.shown);
  EXPECT_EQ(indicator_.tip, L"Quillgate - Internet connection enabled");
}

TEST_F(GateStateTest, ClosingSendsWhatIsLocalFirstAndOnlyYesAllowsIt) {
  struct Case {
    const wchar_t* setting;
    DWORD code;
  };
  constexpr Case kCases[] = {{nullptr, kBlockLocalCode},
                             {L"yes", kBlockLocalCode},
                             {L"YES", kAllowLocalCode},
                             {L"NO", kBlockLocalCode}};
  for (const Case& each : kCases) {
    if (each.setting != nullptr) {
      settings_.SetSetting(SettingKey::kLocalTrafficAllowed, each.setting);
    }
    hook_->ClearCodes();
    session_->Disable();
    EXPECT_THAT(hook_->Codes(), ElementsAre(each.code, kDisableCode));
    EXPECT_FALSE(session_->IsOnline());
  }
  EXPECT_EQ(indicator_.icons.back(), GateIcon::kDisabled);
  EXPECT_EQ(indicator_.tip, L"Quillgate - Internet connection disabled");
}

TEST_F(GateStateTest, WithoutTheHookTheAccountingGoesOn) {
  hook_->FailOpenWith(ERROR_ACCESS_DENIED);
  session_.reset();
  indicator_ = {};
  MakeSession();
  EXPECT_FALSE(session_->IsHookAvailable());
  EXPECT_EQ(session_->HookError(), ERROR_ACCESS_DENIED);
  EXPECT_TRUE(session_->IsOnline());
  EXPECT_THAT(indicator_.icons, ElementsAre(GateIcon::kUndecided));
  LogOn();
  Pass(5s);
  EXPECT_EQ(session_->SecondsOnline(), 5u);
  logon_.LogOff(1);
  EXPECT_FALSE(session_->IsOnline());
  EXPECT_EQ(Rows(L"ConnLog").size(), 1u);
}

TEST_F(GateStateTest, TheEndOfTheProcessOpensTheGateWithoutADatabase) {
  session_->Disable();
  hook_->ClearCodes();
  database_.DbClose();
  logon_.SetSessionControl(nullptr);
  session_.reset();
  EXPECT_THAT(hook_->Codes(), ElementsAre(kEnableCode));
}

TEST_F(GateStateTest, NothingIsCountedWhileNobodyIsLoggedOn) {
  Pass(5s);
  Receive(100);
  EXPECT_TRUE(session_->IsOnline());
  EXPECT_EQ(session_->SecondsOnline(), 0u);
  EXPECT_EQ(session_->BytesReceived(), 0u);
  EXPECT_EQ(session_->BytesSent(), 0u);
}

TEST_F(GateStateTest, ASessionIsMeasuredFromItsOwnStart) {
  Receive(5000);
  Pass(100s);
  LogOn();
  EXPECT_EQ(session_->BytesReceived(), 0u);
  Pass(3725s + 999ms);
  machine_.Interfaces().Count(L"eth0", 65536, 1000);
  EXPECT_EQ(session_->SecondsOnline(), 3725u);
  EXPECT_EQ(session_->BytesReceived(), 65536u);
  EXPECT_EQ(session_->BytesSent(), 1000u);
  session_->Disable();
  EXPECT_EQ(session_->SecondsOnline(), 0u);
  EXPECT_EQ(session_->BytesReceived(), 0u);
}

TEST_F(GateStateTest, ACounterThatFellBehindItsStartCountsNothing) {
  Receive(5000);
  LogOn();
  machine_.Interfaces().SetCounters(L"eth0", {.bytesReceived = 4999});
  EXPECT_EQ(session_->BytesReceived(), 0u);
}

TEST_F(GateStateTest, ACounterThatPasses32BitsIsMeasuredWhole) {
  Receive(0xFFFF'FFFF);
  LogOn();
  Receive(0x1'0000'0001);
  EXPECT_EQ(session_->BytesReceived(), 0x1'0000'0001u);
}

TEST_F(GateStateTest, ACardThatHasCounted4GiBBeginsASessionAtNothing) {
  for (int session = 0; session < 2; ++session) {
    Receive(0x5'0000'0000);
    LogOn();
    EXPECT_EQ(session_->BytesReceived(), 0u);
    Receive(0x1'8000'0000);
    EXPECT_EQ(session_->BytesReceived(), 0x1'8000'0000u);
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
  machine_.Interfaces().Count(L"eth0", 7, 0);
  machine_.Interfaces().Count(L"eth1", 11, 0);
  EXPECT_EQ(session_->BytesReceived(), 11u);
}

TEST_F(GateStateTest, AMachineWithoutACardCountsTimeOnly) {
  machine_.Interfaces().Set({});
  session_.reset();
  MakeSession();
  LogOn();
  Pass(3s);
  EXPECT_EQ(session_->SecondsOnline(), 3u);
  EXPECT_EQ(session_->BytesReceived(), 0u);
}

}  // namespace
}  // namespace quillgate
