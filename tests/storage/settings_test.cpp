#include "storage/settings.h"

#include <gmock/gmock.h>

#include "platform/testing/simulated_machine.h"
#include "storage/scripted_engine.h"

namespace quillgate {
namespace {

using testing::ElementsAre;

class SettingsTest : public testing::Test {
 protected:
  DbRows StoredRows() {
    DbRows rows;
    database_.DbQuery(L"SELECT Key, Value FROM Settings;", rows);
    return rows;
  }

  platform::SimulatedMachine machine_;
  Database database_;
  Settings settings_{database_};
};

TEST_F(SettingsTest, OnlyWritingMakesTheOneRowOfAKeyAndItMayBeEmpty) {
  EXPECT_EQ(settings_.GetSetting(SettingKey::kLogonSystem, L"NONE"), L"NONE");
  EXPECT_THAT(StoredRows(), testing::IsEmpty());
  for (const wchar_t* value : {L"WINDOWS", L""}) {
    settings_.SetSetting(SettingKey::kLogonSystem, value);
    EXPECT_THAT(StoredRows(), ElementsAre(ElementsAre(L"845", value)));
    EXPECT_EQ(settings_.GetSetting(SettingKey::kLogonSystem, L"NONE"), value);
  }
}

TEST_F(SettingsTest, OnlyLettersAToZOfAKeyAreRaised) {
  settings_.SetSetting(L"reminder_\u00E5sa", L"1");
  EXPECT_THAT(StoredRows(), ElementsAre(ElementsAre(L"REMINDER_\u00E5SA", L"1")));
  EXPECT_EQ(settings_.GetSetting(L"Reminder_\u00E5Sa", L""), L"1");
}

TEST_F(SettingsTest, AnApostropheNeitherStoresNorReadsAnythingElse) {
  settings_.SetSetting(SettingKey::kLanguage, L"1053");
  settings_.SetSetting(L"5820", L"0' WHERE '1' = '1");
  settings_.SetSetting(L"x', 'y'); --", L"1");
  EXPECT_EQ(settings_.GetSetting(L"x' OR '1' = '1", L"none"), L"none");
  EXPECT_THAT(StoredRows(), ElementsAre(ElementsAre(L"5820", L"1053")));
}

TEST_F(SettingsTest, OfTwoRowsTheFirstStoredIsRead) {
  database_.DbExecute(L"INSERT INTO Settings VALUES ('6113', 'second by value');");
  database_.DbExecute(L"INSERT INTO Settings VALUES ('6113', 'a');");
  EXPECT_EQ(settings_.GetSetting(SettingKey::kTimeWarningMinutes, L""), L"second by value");
}

TEST_F(SettingsTest, ADatabaseThatCannotBeOpenedGivesDefaults) {
  std::filesystem::create_directory(machine_.ProgramFolder() / "quillgate.dat");
  EXPECT_EQ(settings_.GetSetting(SettingKey::kTimeWarnings, L"YES"), L"YES");
  EXPECT_NO_THROW(settings_.SetSetting(SettingKey::kTimeWarnings, L"NO"));
}

TEST(SettingsOnABusyEngine, AKeyThatCouldNotBeLookedUpGetsNoSecondRow) {
  const platform::SimulatedMachine machine;
  ScriptedEngine engine;
  Database database;
  database.DbOpen();
  engine.ClearStatements();
  engine.Answer(std::vector<EngineAnswer>(20, EngineAnswer{5, "busy", {}}));
  Settings(database).SetSetting(SettingKey::kLanguage, L"1053");
  EXPECT_EQ(engine.Statements().size(), 20u);
}

TEST(SettingNumberTest, LeadingDigitsCountAndEverythingElseIsNothing) {
  const std::pair<std::wstring, std::uint32_t> cases[] = {{L"", 0},
                                                          {L"none", 0},
                                                          {L"12 minutes", 12},
                                                          {L"-5", 0},
                                                          {L"4294967295", 0xFFFFFFFFu},
                                                          {L"4294967297", 1}};
  for (const auto& [text, number] : cases)
    EXPECT_EQ(SettingNumber(text), number) << testing::PrintToString(text);
}

}  // namespace
}  // namespace quillgate
