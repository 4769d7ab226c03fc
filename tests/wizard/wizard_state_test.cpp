// What the setup wizard makes of the users, and what it stores in the end.
#include "wizard/wizard_state.h"

#include "program/program_test.h"

namespace quillgate {
namespace {

using testing::ElementsAre;

class WizardStateTest : public ProgramTest {
 protected:
  // Anna, who rules, and Bo, with a password and a limit of his own.
  WizardStateTest() {
    UseSystem(L"QUILLGATE", {}, {L"Anna"});
    User bo(L"Bo");
    bo.SetPassword(L"lark");
    bo.SetTimeLimit({true, 30, LimitPeriod::kDay});
    users_->Add(bo);
    users_->SaveAll();
  }
  std::wstring System() { return settings_.GetSetting(SettingKey::kLogonSystem, L"-"); }
  static std::wstring Of(UserCollection& users, const wchar_t* name, const wchar_t* password) {
    const auto user = users.Find(name);
    if (user == nullptr) return L"nobody";
    return std::wstring(user->IsAdministrator() ? L"administrator" : L"user") +
           (user->CheckPassword(password) ? L"" : L", other password") + L", " +
           std::to_wstring(user->TimeLimit().amount);
  }
};

TEST_F(WizardStateTest, TheStoredSystemIsTheLastOneChosenButNoneForTheSimpleType) {
  using enum LogonSystem;
  const struct {
    bool isSimple;
    std::vector<LogonSystem> choices;
    LogonSystem system;
  } cases[] = {{true, {}, kNone},
               {false, {kNone}, kNone},
               {false, {kQuillgate}, kQuillgate},
               {false, {kQuillgate, kWindows}, kWindows},
               {false, {kQuillgate, kNone}, kQuillgate},
               {true, {kQuillgate}, kNone}};
  for (const auto& each : cases) {
    WizardState state(database_);
    state.ChooseType(each.isSimple);
    for (const LogonSystem system : each.choices)
      state.ChooseSystem(system);
    EXPECT_EQ(state.System(), each.system) << testing::PrintToString(each.choices);
  }
}

TEST_F(WizardStateTest, TheAdministratorIsMadeOrUpdatedAndAnotherNameUndoesThat) {
  WizardState state(database_);
  state.ChooseSystem(LogonSystem::kQuillgate);
  UserCollection& users = state.Users();
  EXPECT_EQ(state.AdministratorName(), L"Anna");
  state.SetAdministrator(L"Bo", L"new");
  EXPECT_EQ(Of(users, L"Bo", L"new"), L"administrator, 30");
  EXPECT_FALSE(state.RemoveUser(L"Bo"));
  state.SetAdministrator(L"Cy", L"x");
  EXPECT_EQ(Of(users, L"Bo", L"lark"), L"user, 30");
  User cy = *users.Find(L"Cy");
  cy.SetTimeLimit({true, 45, LimitPeriod::kDay});
  users.Replace(cy);
  state.SetAdministrator(L"Dan", L"y");
  EXPECT_EQ(Of(users, L"Dan", L"y"), L"administrator, 45") << "a corrected name";
  state.SetAdministrator(L"Dan", L"z");
  EXPECT_EQ(Of(users, L"Dan", L"z"), L"administrator, 45");
  EXPECT_EQ(state.AdministratorName(), L"Dan");
  EXPECT_TRUE(state.RemoveUser(L"Anna"));
  EXPECT_THAT(users.SortedNames(), ElementsAre(L"Bo", L"Dan"));
  EXPECT_EQ(Rows(L"Users_Quillgate").size(), 2u) << "nothing is stored yet";
}

TEST_F(WizardStateTest, TheChosenSystemIsStoredWithItsUsersAndTheOtherTablesStay) {
  WizardState state(database_);
  state.ChooseSystem(LogonSystem::kQuillgate);
  state.RemoveUser(L"Bo");
  state.SetOverridePassword(L"swan");
  User common = state.CommonUser();
  common.SetTimeLimit({true, 90, LimitPeriod::kWeek});
  state.ReplaceCommonUser(common);
  ASSERT_TRUE(state.Store(settings_));
  EXPECT_EQ(System(), L"NONE");
  UserCollection none(LogonSystem::kNone, database_);
  EXPECT_EQ(Of(none, L"Admin", L"swan"), L"administrator, 1");
  EXPECT_EQ(Of(none, L"User", L""), L"user, 90");
  EXPECT_EQ(Rows(L"Users_Quillgate").size(), 2u);
}

TEST_F(WizardStateTest, AFailureOrUsersThatWereStoredMeanwhileLeaveAllAsItWas) {
  const auto fail = [&](const std::function<void(UserCollection&)>& spoil) {
    WizardState state(database_);
    state.ChooseType(false);
    state.ChooseSystem(LogonSystem::kWindows);
    state.Users().Add(User(L"karl"));
    spoil(state.Users());
    EXPECT_FALSE(state.Store(settings_));
    EXPECT_EQ(System(), L"QUILLGATE");
    EXPECT_EQ(Rows(L"Users_Windows").size(), 0u);
  };
  fail([](UserCollection& users) { users.Add(User(L"O'Brien")); });
  fail([this](UserCollection&) { users_->RemoveStored(L"Bo"); });
  fail([this](UserCollection&) {
    database_.DbExecute(
        L"CREATE TRIGGER Broken BEFORE UPDATE ON Settings WHEN OLD.Key = '845' BEGIN SELECT "
        L"RAISE(ABORT, 'broken'); END;");
  });
}

}  // namespace
}  // namespace quillgate
