#include "accounts/user.h"

#include "program/program_test.h"

namespace quillgate {
namespace {

constexpr wchar_t kTable[] = L"Users_Quillgate";
constexpr wchar_t kBlank[] = L"D41D8CD98F00B204E9800998ECF8427E";
constexpr wchar_t kSecret[] = L"5EBE2294ECD0E0F08EAB7690D2A6EE69";
const std::wstring kEveryHour(168, L'0');

class UserTest : public ProgramTest {
 protected:
  static DbRow ValidRow() {
    return {L"Anna", kBlank, L"YES", L"60", L"1", L"NO", L"500", L"2", kEveryHour, L"1"};
  }
  // Loads the one row of the table, valid but for that column.
  bool LoadWith(std::size_t column, const std::wstring& stored, User& user) {
    DbRow row = ValidRow();
    row[column] = stored;
    database_.DbExecute(std::wstring(L"DELETE FROM ") + kTable + L";");
    Insert(kTable, row);
    return user.Load(L"Anna", kTable, database_);
  }
};

TEST_F(UserTest, EveryColumnIsSavedToTheUsersOneRowAndSurvivesLoading) {
  DbRow anna = {L"Anna", kBlank, L"NO", L"1", L"0", L"NO", L"1", L"0", kEveryHour, L"0"};
  DbRow bo = anna;
  bo[0] = L"Bo";
  User user(L"Anna");
  ASSERT_TRUE(user.Save(kTable, database_));
  ASSERT_TRUE(User(L"Bo").Save(kTable, database_));
  EXPECT_EQ(Rows(kTable), (DbRows{anna, bo}));

  user.AssignAdministrator(true);
  user.SetPassword(L"secret");
  user.SetTimeLimit({true, 90, LimitPeriod::kWeek});
  user.SetDownloadLimit({true, 999999, LimitPeriod::kMonth});
  HoursTable blocked{};
  blocked[0] = blocked[1 * 24 + 8] = blocked[167] = true;
  user.SetConnectHours(blocked);
  ASSERT_TRUE(user.Save(kTable, database_));
  std::wstring hours = kEveryHour;
  hours[0] = hours[32] = hours[167] = L'1';
  anna = {L"Anna", kSecret, L"YES", L"90", L"1", L"YES", L"999999", L"2", hours, L"1"};
  EXPECT_EQ(Rows(kTable), (DbRows{anna, bo}));

  User loaded;
  ASSERT_TRUE(loaded.Load(L"Anna", kTable, database_));
  EXPECT_EQ(loaded.ConnectHours(), user.ConnectHours());
  ASSERT_TRUE(loaded.Save(kTable, database_));
  EXPECT_EQ(Rows(kTable), (DbRows{anna, bo}));
}

TEST_F(UserTest, AValueThatIsNotAsWrittenIsReadByTheRulesOfItsColumn) {
  const std::tuple<std::size_t, const wchar_t*, const wchar_t*> cases[] = {
      {2, L"yes", L"NO"},  {2, L"YES ", L"NO"},
      {4, L"7", L"-1"},    {4, L"-1", L"-1"},
      {4, L"", L"0"},      {7, L"3", L"-1"},
      {7, L"2", L"2"},     {3, L"", L"0"},
      {3, L"12x", L"12"},  {6, L"99999999999", L"2147483647"},
      {9, L"1 and", L"1"}, {9, L"01", L"0"},
  };
  for (const auto& [column, stored, writtenBack] : cases) {
    User user;
    ASSERT_TRUE(LoadWith(column, stored, user)) << column << stored;
    ASSERT_TRUE(user.Save(kTable, database_));
    EXPECT_EQ(Rows(kTable).at(0).at(column), writtenBack) << column << stored;
  }
}

TEST_F(UserTest, AMalformedRowIsNotLoadedButItsEarlierFieldsAreSet) {
  User user;
  EXPECT_FALSE(LoadWith(8, std::wstring(167, L'1'), user)) << "an hour is missing";
  EXPECT_EQ(user.TimeLimit().amount, 60);
  EXPECT_FALSE(LoadWith(9, L"", user)) << "no privileges";
  EXPECT_FALSE(user.IsAdministrator());
}

TEST_F(UserTest, OnlyTheExactNameIsLoadedAndAnUnquotableOneIsNotSaved) {
  const std::tuple<const wchar_t*, const wchar_t*, bool, bool> cases[] = {
      {L"Anna", kTable, true, true},
      {L"anna", kTable, false, true},
      {L"Anna", L"Users_Windows", false, true},
      {L"Anna", L"NoSuchTable", false, false},
      {L"", kTable, false, false},
      {L"O'Brien", kTable, false, false},
      {L"x' OR Name = 'Anna", kTable, false, false},
  };
  Insert(kTable, ValidRow());
  for (const auto& [name, table, loaded, saved] : cases) {
    EXPECT_EQ(User().Load(name, table, database_), loaded) << name;
    EXPECT_EQ(User(name).Save(table, database_), saved) << name;
  }
  EXPECT_EQ(Query(L"SELECT Name FROM Users_Quillgate;"), (DbRows{{L"Anna"}, {L"anna"}}));
}

TEST_F(UserTest, TheHourIsThatOfTheLocalWeekFromSunday) {
  const std::tuple<int, int, int, std::size_t> cases[] = {
      {13, 0, 0, 0}, {13, 0, 59, 0}, {13, 1, 0, 1}, {14, 18, 5, 42}, {19, 23, 59, 167}};
  for (const auto& [day, hour, minute, index] : cases) {
    machine_.Time().SetLocalTime(2005, 3, day, hour, minute, 59);
    HoursTable hours{};
    hours[index] = true;
    User user(L"Bo");
    EXPECT_FALSE(user.IsHourBlocked());
    user.SetConnectHours(hours);
    EXPECT_TRUE(user.IsHourBlocked()) << index;
  }
}

TEST_F(UserTest, ANameIsStorableIfEveryStatementTakesIt) {
  EXPECT_FALSE(IsStorableUserName(L""));
  EXPECT_FALSE(IsStorableUserName(L"O'Brien"));
  for (const wchar_t letter : {L'n', L'\u00E5'}) {
    std::wstring name;
    while (IsStorableUserName(name + letter))
      name += letter;
    for (const bool fits : {true, false}) {
      User user(name);
      user.SetTimeLimit({true, -2147483647 - 1, LimitPeriod::kUnknown});
      user.SetDownloadLimit(user.TimeLimit());
      user.Save(kTable, database_);
      EXPECT_EQ(user.Save(kTable, database_), fits) << name.size();
      name += letter;
    }
  }
}

}  // namespace
}  // namespace quillgate
