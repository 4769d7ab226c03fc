#include "accounts/user_collection.h"

#include "program/program_test.h"

namespace quillgate {
namespace {

using testing::ElementsAre;

class UserCollectionTest : public ProgramTest {
 protected:
  static User Limited(User user, std::int32_t minutes) {
    user.SetTimeLimit({true, minutes, LimitPeriod::kDay});
    return user;
  }
  // An administrator and a user, with the default limit of 1.
  void StoreAnnaAndBo() {
    users_.Add(Administrator(L"Anna"));
    users_.Add(User(L"Bo"));
    ASSERT_TRUE(users_.SaveAll());
  }
  DbRows StoredLimits() {
    return Query(L"SELECT Name, TimeLimit FROM Users_Quillgate ORDER BY Name;");
  }

  UserCollection users_{LogonSystem::kQuillgate, database_};
};

TEST_F(UserCollectionTest, AnAdministratorRemainsWhoeverIsRemovedOrDemoted) {
  const std::tuple<bool, bool, const wchar_t*, bool> cases[] = {
      {true, false, L"Bo", true},     {true, false, L"Anna", false}, {true, true, L"Anna", true},
      {true, true, L"Bo", true},      {false, false, L"Bo", false},  {false, true, L"Anna", true},
      {true, true, L"Nobody", false},
  };
  for (const auto& [annaRules, boRules, name, allowed] : cases) {
    UserCollection users(LogonSystem::kQuillgate, database_);
    users.Add(annaRules ? Administrator(L"Anna") : User(L"Anna"));
    users.Add(boRules ? Administrator(L"Bo") : User(L"Bo"));
    if (const auto user = users.Find(name)) {
      const bool isLast = user->IsAdministrator() && !allowed;
      EXPECT_EQ(users.SetAdministrator(name, false), allowed) << name;
      EXPECT_EQ(users.Find(name)->IsAdministrator(), isLast);
      EXPECT_TRUE(users.Replace(*user));
      EXPECT_EQ(users.Replace(User(name)), !isLast) << name;
      EXPECT_TRUE(users.Replace(*user));
    }
    EXPECT_EQ(users.Remove(name), allowed) << name;
    EXPECT_EQ(users.Count(), allowed ? 1u : 2u);
  }
}

TEST_F(UserCollectionTest, ANameIsTakenOnceAndLettersDifferByCase) {
  EXPECT_TRUE(users_.Add(User(L"Anna")));
  EXPECT_FALSE(users_.Add(Administrator(L"Anna")));
  EXPECT_FALSE(users_.Find(L"Anna")->IsAdministrator());
  EXPECT_TRUE(users_.Add(User(L"anna")));
  EXPECT_TRUE(users_.Add(User(L"Zoe")));
  EXPECT_THAT(users_.SortedNames(), ElementsAre(L"Anna", L"Zoe", L"anna"));
}

TEST_F(UserCollectionTest, RenamingMovesTheEntryAndNotifiesTheUser) {
  StoreAnnaAndBo();
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

TEST_F(UserCollectionTest, SavingMakesTheTableAMirrorOrLeavesItAsItWas) {
  Insert(L"Users_Quillgate", {L"Gone", L"", L"", L"", L"", L"", L"", L"", L"", L""});
  StoreAnnaAndBo();
  users_.Replace(Limited(Administrator(L"Anna"), 77));
  users_.Add(User(L"O'Brien"));
  EXPECT_FALSE(users_.SaveAll());
  EXPECT_EQ(StoredLimits(), (DbRows{{L"Anna", L"1"}, {L"Bo", L"1"}}));
  EXPECT_EQ(UserCollection(LogonSystem::kWindows, database_).Count(), 0u);
  const UserCollection again(LogonSystem::kQuillgate, database_);
  EXPECT_THAT(again.SortedNames(), ElementsAre(L"Anna", L"Bo"));
  EXPECT_TRUE(again.Find(L"Anna")->IsAdministrator());
  // And the database is free for the next one.
  ASSERT_TRUE(users_.Rename(L"O'Brien", L"OBrien"));
  EXPECT_TRUE(users_.SaveAll());
  EXPECT_EQ(StoredLimits(), (DbRows{{L"Anna", L"77"}, {L"Bo", L"1"}, {L"OBrien", L"1"}}));
}

TEST_F(UserCollectionTest, AMalformedRowIsNotifiedAndItsUserIsNotLostByTheNextSave) {
  StoreAnnaAndBo();
  database_.DbExecute(
      L"UPDATE Users_Quillgate SET ConnectHours = '1', TimeLimit = '5' WHERE Name = 'Anna';");
  EXPECT_FALSE(users_.LoadAll());
  EXPECT_THAT(users_.SortedNames(), ElementsAre(L"Anna", L"Bo"));
  EXPECT_TRUE(users_.SaveAll());
  EXPECT_EQ(StoredLimits(), (DbRows{{L"Anna", L"5"}, {L"Bo", L"1"}}));
}

TEST_F(UserCollectionTest, SeveralReplacedUsersAreStoredTogetherOrNotAtAll) {
  StoreAnnaAndBo();
  const std::pair<std::vector<User>, bool> cases[] = {
      {{Limited(Administrator(L"Anna"), 5), User(L"Nobody")}, false},
      {{Limited(User(L"Bo"), 5), Limited(User(L"Anna"), 5)}, false},  // and no administrator
      {{Limited(Administrator(L"Anna"), 5), Limited(User(L"Bo"), 6)}, false},
      {{Limited(User(L"Anna"), 5), Limited(Administrator(L"Bo"), 5)}, true},
  };
  database_.DbExecute(
      L"CREATE TRIGGER Broken BEFORE INSERT ON Users_Quillgate WHEN NEW.TimeLimit = '6' "
      L"BEGIN SELECT RAISE(ABORT, 'broken'); END;");
  for (const auto& [replacements, replaced] : cases) {
    EXPECT_EQ(users_.ReplaceAllStored(replacements), replaced);
    const std::wstring limit = replaced ? L"5" : L"1";
    EXPECT_EQ(StoredLimits(), (DbRows{{L"Anna", limit}, {L"Bo", limit}}));
    for (const wchar_t* name : {L"Anna", L"Bo"})
      EXPECT_EQ(std::to_wstring(users_.Find(name)->TimeLimit().amount), limit);
  }
  EXPECT_TRUE(users_.Find(L"Bo")->IsAdministrator());
}

TEST_F(UserCollectionTest, NothingIsStoredOverUsersThatAnotherProcessHasStored) {
  StoreAnnaAndBo();
  UserCollection others(LogonSystem::kQuillgate, database_);
  EXPECT_FALSE(users_.IsOutdated());
  EXPECT_TRUE(others.AddStored(User(L"Cy")));
  EXPECT_FALSE(others.IsOutdated());
  EXPECT_TRUE(users_.IsOutdated());
  EXPECT_FALSE(users_.SaveAll() || users_.AddStored(User(L"Dan")) || users_.RemoveStored(L"Bo"));
  EXPECT_FALSE(users_.ReplaceAllStored({Limited(User(L"Bo"), 5)}));
  EXPECT_EQ(users_.Find(L"Bo")->TimeLimit().amount, 1);
  EXPECT_EQ(StoredLimits(), (DbRows{{L"Anna", L"1"}, {L"Bo", L"1"}, {L"Cy", L"1"}}));
  EXPECT_TRUE(users_.LoadAll() && users_.RemoveStored(L"Bo"));
  database_.DbExecute(L"DELETE FROM Settings;");  // a database that has been made anew
  EXPECT_FALSE(users_.IsOutdated());
  EXPECT_TRUE(users_.SaveAll());
}

TEST_F(UserCollectionTest, AUserInUseOutlivesItsReplacementItsRemovalAndAReload) {
  users_.Add(Administrator(L"Anna"));
  users_.Add(User(L"Bo"));
  const auto bo = users_.Find(L"Bo");
  EXPECT_TRUE(users_.Replace(Limited(User(L"Bo"), 5)));
  EXPECT_EQ(users_.Find(L"Bo")->TimeLimit().amount, 5);
  EXPECT_EQ(bo->TimeLimit().amount, 1);
  users_.Remove(L"Bo");
  EXPECT_FALSE(users_.Contains(L"Bo"));
  EXPECT_TRUE(users_.LoadAll());
  EXPECT_EQ(users_.Count(), 0u);
  EXPECT_EQ(bo->Name(), L"Bo");
}

TEST_F(UserCollectionTest, TheUsersOfTheNoneSystemAreMadeOnceAndNeverForAnUnreadableTable) {
  UserCollection users(LogonSystem::kNone, database_);
  EnsureBuiltInUsers(users);
  EXPECT_EQ(Query(L"SELECT Name, Privileges FROM Users_None;"),
            (DbRows{{L"Admin", L"1"}, {L"User", L"0"}}));
  User admin = Administrator(L"Admin");
  admin.SetPassword(L"secret");
  ASSERT_TRUE(admin.Save(L"Users_None", database_));
  UserCollection again(LogonSystem::kNone, database_);
  EnsureBuiltInUsers(again);
  EXPECT_TRUE(again.Find(L"Admin")->CheckPassword(L"secret"));
  EXPECT_EQ(Rows(L"Users_None").size(), 2u);

  database_.DbExecute(L"DROP TABLE Users_None;");
  UserCollection unreadable(LogonSystem::kNone, database_);
  EnsureBuiltInUsers(unreadable);
  EXPECT_EQ(unreadable.Count(), 0u);
  EXPECT_FALSE(unreadable.SaveAll());
}

}  // namespace
}  // namespace quillgate
