// The values of the settings pages: what is read and stored, and who may change what.
#include <filesystem>
#include <fstream>

#include "accounts/windows_availability.h"
#include "program/program_test.h"
#include "settings/advanced_settings.h"
#include "settings/general_settings.h"
#include "settings/limit_entry.h"
#include "settings/stored_together.h"
#include "settings/user_edits.h"
#include "settings/user_rights.h"

namespace quillgate {
namespace {

class SettingsValues : public ProgramTest {
 protected:
  std::wstring Setting(SettingKey key) { return settings_.GetSetting(key, L"(none)"); }
};

TEST_F(SettingsValues, AThresholdIsStoredOnlyWhileItsWarningIsOnAndReportedWhenItIsNew) {
  const auto defaults = ReadGeneralSettings(settings_);
  EXPECT_TRUE(defaults.time.enabled);
  EXPECT_FALSE(defaults.download.enabled);
  EXPECT_EQ(defaults.time.threshold + defaults.download.threshold, L"1010");
  const struct {
    WarningSetting time, download;
    bool isNew;
    std::wstring minutes, megabytes;
  } cases[] = {
      {{true, L"10"}, {false, L"99"}, true, L"10", L"(none)"},
      {{true, L"10"}, {false, L"99"}, false, L"10", L"(none)"},
      {{false, L"15"}, {true, L"20"}, true, L"10", L"20"},
      {{true, std::wstring(40, L'1')}, {true, L"20"}, true, std::wstring(31, L'1'), L"20"},
  };
  for (const auto& each : cases) {
    GeneralSettings values;
    values.time = each.time;
    values.download = each.download;
    values.language = 29;
    EXPECT_EQ(StoreGeneralSettings(values, settings_), each.isNew);
    EXPECT_EQ(Setting(SettingKey::kTimeWarnings), each.time.enabled ? kYes : kNo);
    EXPECT_EQ(Setting(SettingKey::kDownloadWarnings), each.download.enabled ? kYes : kNo);
    EXPECT_EQ(Setting(SettingKey::kTimeWarningMinutes), each.minutes);
    EXPECT_EQ(Setting(SettingKey::kDownloadWarningMegabytes), each.megabytes);
  }
  EXPECT_EQ(Setting(SettingKey::kLanguage), L"29");
}

TEST_F(SettingsValues, EnglishIsShownOnlyWhenNothingElseIs) {
  const LanguageList both = {{L"English", 9}, {L"Svenska", 29}};
  const LanguageList four = {{L"a", 7}, {L"English", 9}, {L"c", 29}, {L"d", 12}};
  const struct {
    const LanguageList& languages;
    DWORD stored;
    LANGID systemDefault;
    std::optional<std::size_t> shown;
  } cases[] = {
      {both, 0, 0x409, 0},
      {both, 29, 0x409, 1},
      {both, 9, 0x41D, 0},
      {both, 0, 0x41D, 0},
      // The full identifier of the system counts, and only as long as nothing has been found.
      {both, 9, 29, 1},
      {four, 12, 7, 3},
      {four, 7, 12, 0},
      {four, 99, 29, 2},
      {{}, 9, 9, {}},
  };
  for (const auto& each : cases)
    EXPECT_EQ(ShownLanguage(each.languages, each.stored, each.systemDefault), each.shown)
        << each.stored << ' ' << each.systemDefault;
}

TEST_F(SettingsValues, AdvancedOnesAreReadBackAsTheyWereStored) {
  EXPECT_EQ(ReadAdvancedSettings(settings_).firstDay, 0u);
  StoreAdvancedSettings({6, L"eth1", true, true}, settings_);
  const auto values = ReadAdvancedSettings(settings_);
  EXPECT_EQ(values.firstDay, 6u);
  EXPECT_EQ(values.adapter, L"eth1");
  EXPECT_TRUE(values.localTrafficAllowed && values.statisticsForAdministrators);
}

TEST_F(SettingsValues, AFailureInTheMiddleStoresNothing) {
  settings_.SetSetting(SettingKey::kAdapter, L"eth0");
  EXPECT_FALSE(StoredTogether(database_, [this] {
    settings_.SetSetting(SettingKey::kAdapter, L"eth1");
    settings_.SetSetting(SettingKey::kLanguage, L"O'Brien");
    database_.DbExecute(L"no statement");
  }));
  EXPECT_EQ(Setting(SettingKey::kAdapter), L"eth0");
}

TEST_F(SettingsValues, ALimitThatIsOffTakesAnyText) {
  const User::Limit before{true, 30, LimitPeriod::kWeek};
  const struct {
    LimitEntry entry;
    bool isAccepted;
    User::Limit limit;
  } cases[] = {
      {{true, L"1", 0}, true, {true, 1, LimitPeriod::kDay}},
      {{true, L"999999", 2}, true, {true, 999'999, LimitPeriod::kMonth}},
      {{true, L"0", 1}, false, {true, 30, LimitPeriod::kWeek}},
      {{true, L"1000000", 1}, false, {true, 30, LimitPeriod::kWeek}},
      {{false, L"x", -1}, true, {false, 30, LimitPeriod::kWeek}},
      {{false, L"45", 0}, true, {false, 45, LimitPeriod::kDay}},
  };
  for (const auto& [entry, isAccepted, expected] : cases) {
    EXPECT_EQ(IsAccepted(entry), isAccepted);
    EXPECT_EQ(EntryOf(LimitOf(entry, before)), EntryOf(expected));
  }
}

TEST_F(SettingsValues, TheWindowsSystemIsAvailableOnceItsPackageHasReportedSomebody) {
  const auto hint = [&](const wchar_t* reported) {
    identity_.name = reported;
    return WindowsLogonHint(identity_);
  };
  EXPECT_EQ(hint(L""), kMsgComponentMissing);
  EXPECT_EQ(hint(L"anna"), kMsgComponentMissing);
  RegisterLogonPackage();
  // Found before the real package, which lies beside the test program.
  const auto damaged = machine_.ProgramFolder() / "qgwlnp.so";
  std::ofstream(damaged) << "damaged";
  EXPECT_EQ(hint(L"anna"), kMsgComponentMissing);
  std::filesystem::remove(damaged);
  EXPECT_EQ(hint(L""), kMsgRebootNeeded);
  EXPECT_EQ(hint(L"anna"), 0u);
}

TEST(UserRightsTest, FollowTheLogonSystemAndWhoLooks) {
  constexpr auto kNone = LogonSystem::kNone;
  constexpr auto kOwn = LogonSystem::kQuillgate;
  constexpr auto kWindows = LogonSystem::kWindows;
  const struct {
    const char* what;
    ShownUser shown;
    // Add, remove, password, rules, administrator.
    std::string may;
    MessageId passwordHint, hoursHint;
  } cases[] = {
      {"administrator", {kOwn, true}, "ARPRA", 1015, 1018},
      {"the last one", {kOwn, true, false, true}, "ARPR-", 1015, 1018},
      {"an empty list", {kOwn, true, false, false, false}, "A----", 1015, 1018},
      {"a regular user", {kOwn, false}, "--P--", 1051, 1018},
      {"the common user", {kNone, true}, "---R-", 1128, 1129},
      {"the override", {kNone, true, true, true}, "--PR-", 1128, 1129},
      {"the common user himself", {kNone, false}, "-----", 1128, 1129},
      {"an account", {kWindows, true}, "A--RA", 1015, 1018},
      {"an account's owner", {kWindows, false}, "-----", 1051, 1018},
  };
  for (const auto& each : cases) {
    const UserRights rights = RightsOver(each.shown);
    std::string may;
    may += rights.mayAdd ? 'A' : '-';
    may += rights.mayRemove ? 'R' : '-';
    may += rights.mayChangePassword ? 'P' : '-';
    may += rights.mayChangeRules ? 'R' : '-';
    may += rights.mayChangeAdministrator ? 'A' : '-';
    EXPECT_EQ(may, each.may) << each.what;
    EXPECT_EQ(rights.passwordHint, each.passwordHint) << each.what;
    EXPECT_EQ(rights.hoursHint, each.hoursHint) << each.what;
  }
  EXPECT_TRUE(StartsAsAdministrator(kOwn, false));
  EXPECT_FALSE(StartsAsAdministrator(kOwn, true));
  EXPECT_FALSE(StartsAsAdministrator(kWindows, false));
}

TEST_F(SettingsValues, EditsOfSeveralUsersAreStoredTogetherOrKept) {
  UseSystem(L"QUILLGATE", {L"Bo", L"Cy"}, {L"Anna"});
  UserEdits edits(users_);
  const auto change = [&](const std::wstring& name, bool administrator) {
    User user = *edits.Find(name);
    user.AssignAdministrator(administrator);
    user.SetTimeLimit({true, 5, LimitPeriod::kDay});
    edits.Change(user);
  };
  change(L"Bo", true);
  EXPECT_FALSE(edits.HasOtherAdministrator(L"Bo") && !edits.Find(L"Anna")->IsAdministrator());
  EXPECT_TRUE(edits.HasOtherAdministrator(L"Anna")) << "Bo will be one";
  change(L"Anna", false);
  change(L"Cy", false);
  EXPECT_FALSE(edits.HasOtherAdministrator(L"Bo"));
  EXPECT_FALSE(users_->Find(L"Bo")->TimeLimit().enabled) << "nothing is applied yet";
  database_.DbExecute(
      L"CREATE TRIGGER Full BEFORE INSERT ON Users_Quillgate BEGIN SELECT "
      L"RAISE(FAIL, 'full'); END;");
  EXPECT_FALSE(edits.Store());
  EXPECT_TRUE(edits.HasChanges());
  database_.DbExecute(L"DROP TRIGGER Full;");
  EXPECT_TRUE(users_->RemoveStored(L"Cy"));
  EXPECT_TRUE(edits.Store()) << "whoever is gone is left out";
  EXPECT_FALSE(edits.HasChanges());
  EXPECT_TRUE(users_->Find(L"Bo")->IsAdministrator());
  EXPECT_FALSE(users_->Find(L"Anna")->IsAdministrator());
  EXPECT_EQ(edits.Find(L"Cy"), std::nullopt);
  EXPECT_EQ(Rows(L"Users_Quillgate").size(), 2u);
}

}  // namespace
}  // namespace quillgate
