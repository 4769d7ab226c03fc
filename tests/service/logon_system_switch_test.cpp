// The change to another logon system while the service runs.
#include "service/service_test.h"

namespace quillgate {
namespace {

class LogonSystemSwitchTest : public ServiceTest {
 protected:
  bool Switch(const wchar_t* word) {
    return objects_.Switch([&] {
      Set(SettingKey::kLogonSystem, word);
      return true;
    });
  }
};

TEST_F(LogonSystemSwitchTest, EndsTheSessionLoadsTheOtherUsersAndAsksNobody) {
  AddUser(LogonSystem::kQuillgate, L"Bo");
  AddWindowsUser();
  objects_.BeginSession();
  EXPECT_EQ(LoggedOn(), L"User");
  const struct {
    const wchar_t *word, *table, *loggedOn;
  } cases[] = {{L"QUILLGATE", L"Users_Quillgate", L""},
               {L"WINDOWS", L"Users_Windows", L"Anna"},
               {L"NONE", L"Users_None", L"Admin"}};
  for (const auto& each : cases) {
    EXPECT_TRUE(Switch(each.word));
    EXPECT_EQ(objects_.Users()->Table(), each.table);
    EXPECT_EQ(LoggedOn(), each.loggedOn);
    EXPECT_EQ(objects_.Session().IsOnline(), LoggedOn() != L"") << each.word;
  }
  EXPECT_EQ(Query(L"SELECT User FROM ConnLog;"), (DbRows{{L"User"}, {L"Anna"}}));
}

TEST_F(LogonSystemSwitchTest, ChangesNothingWhenNothingCouldBeStored) {
  objects_.BeginSession();
  EXPECT_FALSE(objects_.Switch([] { return false; }));
  EXPECT_EQ(LoggedOn(), L"User");
  EXPECT_TRUE(objects_.Session().IsOnline());
}

}  // namespace
}  // namespace quillgate
