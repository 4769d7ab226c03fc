// Clicks on the icon, what the menu's commands do, and the gate's state on the icon.
#include "ui/tray_controller.h"

#include "resources/resource.h"
#include "tray_test.h"

namespace quillgate {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TrayControllerTest : public TrayTest {
 protected:
  void Send(UINT event) { ::SendMessageW(tray_.Window(), WM_USER + 1, 0, event); }
  void Choose(UINT command) {
    machine_.AnswerMenus({command});
    Send(WM_RBUTTONUP);
  }
  void DoubleClick() { Send(WM_LBUTTONDBLCLK); }
  NOTIFYICONDATAW Shown() const {
    return platform::NotificationIcon(tray_.Window(), 0).value_or(NOTIFYICONDATAW{});
  }
  std::wstring LoggedOn() const {
    const auto user = logon_.CurrentUser();
    return user == nullptr ? L"" : user->Name();
  }

  TrayController tray_{Surroundings()};
};

TEST_F(TrayControllerTest, CommandsDoWhatTheirItemsSay) {
  LogOn(L"Bo");
  struct Case {
    UINT command;
    std::vector<std::string> done;
  };
  for (const Case& each :
       {Case{0, {}}, Case{2, {}}, Case{4, {"settings"}}, Case{5, {"statistics"}},
        Case{11, {"about"}}, Case{12, {}}, Case{13, {"connection"}}, Case{99, {}},
        Case{7, {"log on "}}, Case{14, {"log off", "log on Admin"}},
        Case{15, {"log off", "log on User"}}, Case{6, {"log off"}}, Case{1, {"log off", "stop"}}}) {
    done.clear();
    Choose(each.command);
    EXPECT_EQ(done, each.done) << each.command;
  }
  EXPECT_THAT(machine_.MessageBoxes(), IsEmpty());
}

TEST_F(TrayControllerTest, ConnectionAndSettingsNeedAUser) {
  Choose(13);
  Choose(4);
  EXPECT_THAT(done, IsEmpty());
  Choose(5);
  EXPECT_THAT(done, ElementsAre("statistics"));
}

TEST_F(TrayControllerTest, TheOverrideComesAndGoes) {
  UseSystem(L"NONE");
  LogOn(L"User");
  Expect(L"Admin");
  Choose(14);
  EXPECT_EQ(LoggedOn(), L"Admin");
  Choose(15);
  EXPECT_EQ(LoggedOn(), L"User");
}

TEST_F(TrayControllerTest, AMissingPartIsTold) {
  TraySurroundings bare = Surroundings();
  bare.openers = {};
  const TrayController tray(bare);
  LogOn(L"Bo");
  machine_.AnswerMenus({4});
  ::SendMessageW(tray.Window(), WM_USER + 1, 0, WM_RBUTTONUP);
  ASSERT_EQ(machine_.MessageBoxes().size(), 1u);
  const platform::MessageBoxRequest box = machine_.MessageBoxes()[0];
  EXPECT_EQ(box.caption, L"Quillgate");
  EXPECT_EQ(box.text, catalogue_.GetMessageText(10009));
  EXPECT_EQ(box.type, static_cast<UINT>(MB_OK | MB_ICONERROR));
}

TEST_F(TrayControllerTest, AFailureOfTheDatabaseIsToldAndTheTrayGoesOn) {
  LogOn(L"Bo");
  whileOpen = [] { throw DBerror(L"no such table", 1); };
  Choose(13);
  ASSERT_EQ(machine_.MessageBoxes().size(), 1u);
  EXPECT_EQ(machine_.MessageBoxes()[0].text, L"A database error was detected:\n\nno such table");
  whileOpen = {};
  Choose(13);
  EXPECT_THAT(done, ElementsAre("connection", "connection"));
}

TEST_F(TrayControllerTest, EachUserIsRemindedOnceToLogOff) {
  struct Case {
    const wchar_t* user;
    std::size_t balloons;
  };
  std::size_t shown = 0;
  for (const Case& each : {Case{L"Anna", 1}, Case{L"Anna", 1}, Case{L"Bo", 2}}) {
    logon_.LogOff(1);
    Expect(each.user);
    const std::size_t before = machine_.NotificationChanges().size();
    Choose(7);
    shown += machine_.NotificationChanges().size() - before;
    EXPECT_EQ(shown, each.balloons);
  }
  const NOTIFYICONDATAW balloon = machine_.NotificationChanges().back().second;
  EXPECT_STREQ(balloon.szInfoTitle, L"Quillgate - Reminder");
  EXPECT_STREQ(balloon.szInfo, catalogue_.GetMessageText(20018).c_str());
  EXPECT_EQ(balloon.dwInfoFlags, NIIF_INFO);
  EXPECT_EQ(settings_.GetSetting(L"REMINDER_Bo", {}), L"1");
}

TEST_F(TrayControllerTest, NobodyIsRemindedWhoDidNotLogOn) {
  const std::size_t before = machine_.NotificationChanges().size();
  Choose(7);
  DoubleClick();
  EXPECT_EQ(machine_.NotificationChanges().size(), before);
}

TEST_F(TrayControllerTest, UnderWindowsOnlyTheDoubleClickReminds) {
  UseSystem(L"WINDOWS");
  Expect(L"Anna");
  Choose(7);
  EXPECT_EQ(settings_.GetSetting(L"REMINDER_Anna", {}), L"");
  logon_.LogOff(1);
  DoubleClick();
  EXPECT_EQ(settings_.GetSetting(L"REMINDER_Anna", {}), L"1");
}

TEST_F(TrayControllerTest, ADoubleClickOpensWhatTheUserMaySee) {
  LogOn(L"Anna");
  DoubleClick();
  AdministratorsOnly();
  DoubleClick();
  LogOn(L"Bo");
  DoubleClick();
  EXPECT_THAT(done, ElementsAre("statistics", "connection", "statistics"));
  done.clear();
  UseSystem(L"NONE");
  LogOn(L"User");
  settings_.SetSetting(SettingKey::kStatisticsForAdmins, kNo);
  DoubleClick();
  EXPECT_THAT(done, ElementsAre("connection"));
}

TEST_F(TrayControllerTest, WhileSomethingIsOpenClicksAreIgnored) {
  LogOn(L"Bo");
  whileOpen = [this] {
    Send(WM_RBUTTONUP);
    DoubleClick();
  };
  machine_.AnswerMenus({13, 13, 13});
  Send(WM_RBUTTONUP);
  EXPECT_THAT(done, ElementsAre("connection"));
  whileOpen = {};
  Send(WM_RBUTTONUP);
  EXPECT_THAT(done, ElementsAre("connection", "connection"));
}

TEST_F(TrayControllerTest, OthersLockItToo) {
  LogOn(L"Bo");
  tray_.Lock();
  { const IndicatorLock dialog(tray_); }
  Choose(13);
  DoubleClick();
  EXPECT_THAT(done, IsEmpty());
  EXPECT_THAT(machine_.Menus(), IsEmpty());
  tray_.Unlock();
  DoubleClick();
  EXPECT_THAT(done, ElementsAre("statistics"));
}

TEST_F(TrayControllerTest, AStopOverTheMenuLeavesWhatIsChosenUndone) {
  LogOn(L"Bo");
  platform::SetMenuTracker([this](const platform::TrackedMenu&) {
    stop_.Raise();
    return 13u;
  });
  Send(WM_RBUTTONUP);
  Choose(13);
  EXPECT_THAT(done, IsEmpty());
}

TEST_F(TrayControllerTest, TheLeftButtonOpensNoMenu) {
  Send(WM_LBUTTONDOWN);
  Send(WM_LBUTTONUP);
  Send(WM_RBUTTONDOWN);
  EXPECT_THAT(machine_.Menus(), IsEmpty());
}

TEST_F(TrayControllerTest, TheMenuIsDrawnByItsOwnerAtTheCursor) {
  LogOn(L"Bo");
  machine_.SetCursorPlace(POINT{300, 200});
  Choose(0);
  ASSERT_EQ(machine_.Menus().size(), 1u);
  const platform::TrackedMenu menu = machine_.Menus()[0];
  EXPECT_EQ(menu.place.x, 300);
  EXPECT_EQ(menu.place.y, 200);
  EXPECT_EQ(menu.flags & TPM_RETURNCMD, TPM_RETURNCMD);
  ASSERT_EQ(menu.items.size(), 9u);
  for (const platform::TrackedItem& item : menu.items) {
    EXPECT_EQ(item.isOwnerDrawn, !item.isSeparator);
    EXPECT_EQ(item.isDefault, item.command == 5);
  }
  const platform::TrackedItem& help = menu.items[6];
  EXPECT_EQ(help.text, L"Help");
  EXPECT_NE(help.data, 0u);
  EXPECT_EQ(help.submenu.size(), 3u);
  EXPECT_EQ(menu.items[0].data, 0u);
}

TEST_F(TrayControllerTest, TheMenuFollowsTheLanguage) {
  catalogue_.SetInterfaceLanguage(1053);
  Choose(0);
  ASSERT_EQ(machine_.Menus().size(), 1u);
  EXPECT_EQ(machine_.Menus()[0].items[0].text, catalogue_.GetMessageText(1043));
  EXPECT_NE(machine_.Menus()[0].items[0].text, L"Log on...");
}

TEST_F(TrayControllerTest, WithoutACursorThereIsNoMenu) {
  machine_.SetCursorPlace(std::nullopt);
  Choose(5);
  EXPECT_THAT(machine_.Menus(), IsEmpty());
  EXPECT_THAT(done, IsEmpty());
}

TEST_F(TrayControllerTest, StartsAsTheProgramsNameAndShowsTheGate) {
  EXPECT_STREQ(Shown().szTip, L"Quillgate");
  EXPECT_EQ(Shown().dwState, NIS_HIDDEN);
  GateIndicator& indicator = tray_;
  indicator.SetIcon(GateIcon::kEnabled);
  indicator.SetTip(L"Quillgate - Internet connection enabled");
  indicator.Show();
  EXPECT_NE(Shown().hIcon, nullptr);
  EXPECT_STREQ(Shown().szTip, L"Quillgate - Internet connection enabled");
  EXPECT_EQ(Shown().dwState, 0u);
  indicator.ShowMessage(L"text", L"title", BalloonIcon::kError, 3);
  EXPECT_STREQ(Shown().szInfo, L"text");
  EXPECT_STREQ(Shown().szInfoTitle, L"title");
  EXPECT_EQ(Shown().dwInfoFlags, NIIF_ERROR);
  EXPECT_EQ(tray_.LastMessageKind(), 3);
}

}  // namespace
}  // namespace quillgate
