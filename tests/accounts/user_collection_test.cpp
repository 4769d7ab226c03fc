#include "accounts/user_collection.h"

#include <gmock/gmock.h>

#include "accounts_test.h"

namespace quillgate {
namespace {

using testing::ElementsAre;

class UserCollectionTest : public AccountsTest {
 protected:
  static User Limited(const wchar_t* name, std::int32_t minutes, bool administrator = false) {
    User user = MakeUser(name, administrator);
    user.SetTimeLimit({true, minutes, LimitPeriod::kDay});
    return user;
  }
  DbRows StoredLimits() {
    return Query(L"SELECT Name, TimeLimit FROM Users_Quillgate ORDER BY Name;");
  }
  DbRows StoredNames() { return Query(L"SELECT Name FROM Users_Quillgate ORDER BY Name;"); }

  UserCollection users_{LogonSystem::kQuillgate, database_};
};

TEST_F(UserCollectionTest, AnAdministratorRemainsWhoeverIsRemovedOrDemoted) {
  const struct {
    bool annaRules, boRules;
    const wchar_t* name;
    bool allowed;
  } cases[] = {
      {true, false, L"Bo", true},     {true, false, L"Anna", false}, {true, true, L"Anna", true},
      {true, true, L"Bo", true},      {false, false, L"Bo", false},  {false, true, L"Anna", true},
      {true, true, L"Nobody", false},
  };
  for (const auto& each : cases) {
    UserCollection users(LogonSystem::kQuillgate, database_);
    users.Add(MakeUser(L"Anna", each.annaRules));
    users.Add(MakeUser(L"Bo", each.boRules));
    if (const auto user = users.Find(each.name)) {
      EXPECT_EQ(users.SetAdministrator(each.name, false), each.allowed) << each.name;
      EXPECT_EQ(users.Find(each.name)->IsAdministrator(), user->IsAdministrator() && !each.allowed);
      EXPECT_TRUE(users.Replace(*user));
      const bool isLast = user->IsAdministrator() && !each.allowed;
      EXPECT_EQ(users.Replace(MakeUser(each.name)), !isLast) << each.name;
      EXPECT_TRUE(users.Replace(*user));
    }
    EXPECT_EQ(users.Remove(each.name), each.allowed) << each.name;
    EXPECT_EQ(users.Count(), each.allowed ? 1u : 2u);
  }
}

TEST_F(UserCollectionTest, ANameIsTakenOnce) {
  EXPECT_TRUE(users_.Add(MakeUser(L"Anna")));
  EXPECT_FALSE(users_.Add(MakeUser(L"Anna", true)));
  EXPECT_FALSE(users_.Find(L"Anna")->IsAdministrator());
  EXPECT_TRUE(users_.Add(MakeUser(L"anna")));
  EXPECT_TRUE(users_.Add(MakeUser(L"Zoe")));
  EXPECT_THAT(users_.SortedNames(), ElementsAre(L"Anna", L"Zoe", L"anna"));
}

TEST_F(UserCollectionTest, RenamingMovesTheEntryAndTellsTheUser) {
  users_.Add(MakeUser(L"Anna", true));
  users_.Add(MakeUser(L"Bo"));
  const auto entry = users_.FindEntry(L"Anna");
  EXPECT_FALSE(users_.Rename(L"Anna", L"Bo"));
  EXPECT_FALSE(users_.Rename(L"Cid", L"Dan"));
  EXPECT_FALSE(users_.Rename(L"Anna", L"Anna"));
  EXPECT_EQ(entry->Latest()->Name(), L"Anna");
  EXPECT_TRUE(users_.Rename(L"Anna", L"Cid"));
  EXPECT_EQ(users_.FindEntry(L"Cid"), entry);
  EXPECT_EQ(entry->Latest()->Name(), L"Cid");
  EXPECT_TRUE(entry->Latest()->IsAdministrator());
  EXPECT_THAT(users_.SortedNames(), ElementsAre(L"Bo", L"Cid"));
}

TEST_F(UserCollectionTest, SavingMakesTheTableAMirrorOfTheCollection) {
  InsertRow(L"Users_Quillgate", {L"Gone", L"", L"", L"", L"", L"", L"", L"", L"", L""});
  users_.Add(MakeUser(L"Bo"));
  users_.Add(MakeUser(L"Anna", true));
  ASSERT_TRUE(users_.SaveAll());
  EXPECT_EQ(StoredNames(), (DbRows{{L"Anna"}, {L"Bo"}}));
  UserCollection others(LogonSystem::kWindows, database_);
  EXPECT_EQ(others.Count(), 0u);
  UserCollection again(LogonSystem::kQuillgate, database_);
  EXPECT_THAT(again.SortedNames(), ElementsAre(L"Anna", L"Bo"));
  EXPECT_TRUE(again.Find(L"Anna")->IsAdministrator());
}

TEST_F(UserCollectionTest, ASaveThatFailsHalfWayLeavesTheTableAsItWas) {
  users_.Add(MakeUser(L"Anna", true));
  users_.Add(MakeUser(L"Zoe"));
  ASSERT_TRUE(users_.SaveAll());
  users_.Replace(Limited(L"Anna", 77, true));
  users_.Add(MakeUser(L"O'Brien"));
  EXPECT_FALSE(users_.SaveAll());
  EXPECT_EQ(StoredLimits(), (DbRows{{L"Anna", L"1"}, {L"Zoe", L"1"}}));
  // And the database is free for the next one.
  ASSERT_TRUE(users_.Rename(L"O'Brien", L"OBrien"));
  EXPECT_TRUE(users_.SaveAll());
  EXPECT_EQ(StoredNames().size(), 3u);
}

TEST_F(UserCollectionTest, AMalformedRowIsToldAndItsUserIsNotLostByTheNextSave) {
  users_.Add(MakeUser(L"Anna", true));
  users_.Add(MakeUser(L"Zoe"));
  ASSERT_TRUE(users_.SaveAll());
  database_.DbExecute(
      L"UPDATE Users_Quillgate SET ConnectHours = '1', TimeLimit = '5' "
      L"WHERE Name = 'Anna';");
  EXPECT_FALSE(users_.LoadAll());
  EXPECT_THAT(users_.SortedNames(), ElementsAre(L"Anna", L"Zoe"));
  EXPECT_EQ(users_.Find(L"Anna")->TimeLimit().amount, 5);
  EXPECT_TRUE(users_.SaveAll());
  EXPECT_EQ(StoredNames(), (DbRows{{L"Anna"}, {L"Zoe"}}));
}

TEST_F(UserCollectionTest, SeveralReplacedUsersAreStoredTogetherOrNotAtAll) {
  users_.Add(MakeUser(L"Anna", true));
  users_.Add(MakeUser(L"Bo"));
  ASSERT_TRUE(users_.SaveAll());
  const struct {
    std::vector<User> users;
    bool replaced;
  } cases[] = {
      {{Limited(L"Anna", 5, true), Limited(L"Nobody", 5)}, false},
      {{Limited(L"Bo", 5), Limited(L"Anna", 5)}, false},  // and no administrator
      {{Limited(L"Anna", 5, true), Limited(L"Bo", 6)}, false},
      {{Limited(L"Anna", 5), Limited(L"Bo", 5, true)}, true},
  };
  database_.DbExecute(
      L"CREATE TRIGGER Broken BEFORE INSERT ON Users_Quillgate WHEN NEW.TimeLimit = '6' "
      L"BEGIN SELECT RAISE(ABORT, 'broken'); END;");
  for (const auto& each : cases) {
    EXPECT_EQ(users_.ReplaceAllStored(each.users), each.replaced);
    const std::wstring limit = each.replaced ? L"5" : L"1";
    EXPECT_EQ(StoredLimits(), (DbRows{{L"Anna", limit}, {L"Bo", limit}}));
    for (const wchar_t* name : {L"Anna", L"Bo"})
      EXPECT_EQ(std::to_wstring(users_.Find(name)->TimeLimit().amount), limit);
  }
  EXPECT_TRUE(users_.Find(L"Bo")->IsAdministrator());
}

TEST_F(UserCollectionTest, AUserInUseOutlivesItsReplacementItsRemovalAndAReload) {
  users_.Add(MakeUser(L"Anna", true));
  users_.Add(MakeUser(L"Bo"));
  const auto bo = users_.Find(L"Bo");
  EXPECT_TRUE(users_.Replace(Limited(L"Bo", 5)));
  EXPECT_EQ(users_.Find(L"Bo")->TimeLimit().amount, 5);
  EXPECT_EQ(bo->TimeLimit().amount, 1);
  users_.Remove(L"Bo");
  EXPECT_FALSE(users_.Contains(L"Bo"));
  EXPECT_TRUE(users_.Contains(L"Anna"));
  EXPECT_TRUE(users_.LoadAll());
  EXPECT_EQ(users_.Count(), 0u);
  EXPECT_EQ(bo->Name(), L"Bo");
}

TEST_F(UserCollectionTest, TheTwoUsersOfTheNoneSystemAreMadeOnceAndKept) {
  UserCollection users(LogonSystem::kNone, database_);
  EnsureBuiltInUsers(users);
  EXPECT_THAT(users.SortedNames(), ElementsAre(L"Admin", L"User"));
  User admin = *users.Find(L"Admin");
  admin.SetPassword(L"secret");
  users.Replace(std::move(admin));
  ASSERT_TRUE(users.SaveAll());
  UserCollection again(LogonSystem::kNone, database_);
  EnsureBuiltInUsers(again);
  EXPECT_TRUE(again.Find(L"Admin")->CheckPassword(L"secret"));
  EXPECT_TRUE(again.Find(L"Admin")->IsAdministrator());
  EXPECT_FALSE(again.Find(L"User")->IsAdministrator());
  EXPECT_EQ(Query(L"SELECT Name FROM Users_None;").size(), 2u);
}

TEST_F(UserCollectionTest, ATableThatCannotBeReadIsNotFilledWithTheBuiltInUsers) {
  UserCollection users(LogonSystem::kNone, database_);
  database_.DbExecute(L"DROP TABLE Users_None;");
  EnsureBuiltInUsers(users);
  EXPECT_EQ(users.Count(), 0u);
  EXPECT_FALSE(users.SaveAll());
}

}  // namespace
}  // namespace quillgate
