#include "accounts/user.h"

#include "accounts_test.h"

namespace quillgate {
namespace {

constexpr wchar_t kTable[] = L"Users_Quillgate";
constexpr wchar_t kBlank[] = L"D41D8CD98F00B204E9800998ECF8427E";

DbRow ValidRow() {
  return {L"Anna", kBlank, L"YES", L"60", L"1", L"NO", L"500", L"2", std::wstring(168, L'0'), L"1"};
}

class UserTest : public AccountsTest {
 protected:
  // Loads the one row of the table, valid but for that column.
  bool LoadWith(std::size_t column, const std::wstring& stored, User& user) {
    DbRow row = ValidRow();
    row[column] = stored;
    database_.DbExecute(std::wstring(L"DELETE FROM ") + kTable + L";");
    InsertRow(kTable, row);
    return user.Load(L"Anna", kTable, database_);
  }
  DbRows Stored() { return Query(std::wstring(L"SELECT * FROM ") + kTable + L" ORDER BY Name;"); }
};

TEST_F(UserTest, ANewUserIsStoredWithTheDefaults) {
  ASSERT_TRUE(User(L"Bo").Save(kTable, database_));
  EXPECT_EQ(Stored(), (DbRows{{L"Bo", kBlank, L"NO", L"1", L"0", L"NO", L"1", L"0",
                               std::wstring(168, L'0'), L"0"}}));
}

TEST_F(UserTest, EveryColumnSurvivesSavingAndLoading) {
  User user(L"Anna");
  user.SetPassword(L"secret");
  user.AssignAdministrator(true);
  user.SetTimeLimit({true, 90, LimitPeriod::kWeek});
  user.SetDownloadLimit({true, 999999, LimitPeriod::kMonth});
  HoursTable blocked{};
  blocked[0] = blocked[1 * 24 + 8] = blocked[167] = true;
  user.SetConnectHours(blocked);
  ASSERT_TRUE(user.Save(kTable, database_));

  std::wstring hours(168, L'0');
  hours[0] = hours[32] = hours[167] = L'1';
  EXPECT_EQ(Stored(), (DbRows{{L"Anna", L"5EBE2294ECD0E0F08EAB7690D2A6EE69", L"YES", L"90", L"1",
                               L"YES", L"999999", L"2", hours, L"1"}}));
  User loaded;
  ASSERT_TRUE(loaded.Load(L"Anna", kTable, database_));
  EXPECT_EQ(loaded.ConnectHours(), user.ConnectHours());
  ASSERT_TRUE(loaded.Save(kTable, database_));
  EXPECT_EQ(Stored().front().at(3), L"90");
}

TEST_F(UserTest, SavingAUserAgainUpdatesItsRowAndAddsNone) {
  ASSERT_TRUE(User(L"Bo").Save(kTable, database_));
  User user(L"Anna");
  ASSERT_TRUE(user.Save(kTable, database_));
  user.SetTimeLimit({true, 30, LimitPeriod::kDay});
  user.AssignAdministrator(true);
  ASSERT_TRUE(user.Save(kTable, database_));
  ASSERT_EQ(Stored().size(), 2u);
  EXPECT_EQ(Stored()[0].at(2), L"YES");
  EXPECT_EQ(Stored()[0].at(3), L"30");
  EXPECT_EQ(Stored()[0].at(9), L"1");
  EXPECT_EQ(Stored()[1].at(2), L"NO");
}

TEST_F(UserTest, AValueThatIsNotAsWrittenIsReadByTheRulesOfItsColumn) {
  const struct {
    std::size_t column;
    const wchar_t* stored;
    const wchar_t* writtenBack;
  } cases[] = {
      {2, L"yes", L"NO"},  {2, L"YES ", L"NO"},
      {4, L"7", L"-1"},    {4, L"-1", L"-1"},
      {4, L"", L"0"},      {7, L"3", L"-1"},
      {7, L"2", L"2"},     {3, L"", L"0"},
      {3, L"12x", L"12"},  {6, L"99999999999", L"2147483647"},
      {9, L"1 and", L"1"}, {9, L"01", L"0"},
  };
  for (const auto& each : cases) {
    User user;
    ASSERT_TRUE(LoadWith(each.column, each.stored, user)) << each.column << each.stored;
    ASSERT_TRUE(user.Save(kTable, database_));
    EXPECT_EQ(Stored().at(0).at(each.column), each.writtenBack) << each.column << each.stored;
  }
}

TEST_F(UserTest, AMalformedRowIsNotLoadedButItsEarlierFieldsAreSet) {
  const std::pair<std::size_t, std::wstring> cases[] = {{8, std::wstring(167, L'1')}, {9, L""}};
  for (const auto& [column, stored] : cases) {
    User user;
    EXPECT_FALSE(LoadWith(column, stored, user)) << column;
    EXPECT_EQ(user.TimeLimit().amount, 60);
    EXPECT_FALSE(user.IsAdministrator());
  }
}

TEST_F(UserTest, NamesDifferByCaseAndAnAbsentOneIsNotLoaded) {
  InsertRow(kTable, ValidRow());
  EXPECT_TRUE(User().Load(L"Anna", kTable, database_));
  EXPECT_FALSE(User().Load(L"anna", kTable, database_));
  EXPECT_FALSE(User().Load(L"Anna", L"Users_Windows", database_));
}

TEST_F(UserTest, ANameThatCannotStandInAStatementIsNeitherSavedNorLoaded) {
  InsertRow(kTable, ValidRow());
  for (const wchar_t* name : {L"", L"O'Brien", L"x' OR Name = 'Anna"}) {
    EXPECT_FALSE(User(name).Save(kTable, database_)) << name;
    EXPECT_FALSE(User().Load(name, kTable, database_)) << name;
  }
  EXPECT_EQ(Stored(), DbRows{ValidRow()});
}

TEST_F(UserTest, ADatabaseFailureIsAnAnswerAndNoException) {
  EXPECT_FALSE(User(L"Bo").Save(L"NoSuchTable", database_));
  EXPECT_FALSE(User().Load(L"Bo", L"NoSuchTable", database_));
}

TEST_F(UserTest, TheHourIsThatOfTheLocalWeekFromSunday) {
  const struct {
    int day, hour, minute;  // of March 2005
    std::size_t index;
  } cases[] = {{13, 0, 0, 0}, {13, 0, 59, 0}, {13, 1, 0, 1}, {14, 18, 5, 42}, {19, 23, 59, 167}};
  for (const auto& each : cases) {
    machine_.Time().SetLocalTime(2005, 3, each.day, each.hour, each.minute, 59);
    User user(L"Bo");
    for (const bool blocked : {false, true}) {
      HoursTable hours;
      hours.fill(!blocked);
      hours[each.index] = blocked;
      user.SetConnectHours(hours);
      EXPECT_EQ(user.IsHourBlocked(), blocked) << each.index;
    }
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
