// Clicks on the icon, what the menu's commands do, and the gate's state on the icon.
#include "ui/tray_controller.h"

#include "program/program_test.h"
#include "resources/resource.h"

namespace quillgate {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

// Anna and Cid are regular users, Bo is an administrator.
class TrayControllerTest : public ProgramTest, protected LogonControl {
 protected:
  TrayControllerTest() {
    catalogue_.SetInterfaceLanguage(1033);
    Use(L"QUILLGATE");
  }

  void Use(const wchar_t* word) { UseSystem(word, {L"Anna", L"Cid", L"User"}, {L"Admin", L"Bo"}); }
  // Whoever is asked or looked for from now on is of that name.
  void Expect(const std::wstring& name) { prompts_.name = identity_.name = name; }
  // Not by the tray.
  void LogOn(const std::wstring& name) {
    Expect(name);
    logon_.LogOn(name);
  }

  TraySurroundings Surroundings() {
    const auto opener = [this](const char* what) {
      return [this, what] {
        done_ += what;
        if (whileOpen_) whileOpen_();
      };
    };
    TraySurroundings surroundings{catalogue_, settings_, logon_, *this, help_, stop_, {}};
    surroundings.openers = {opener("connection."), opener("settings."), opener("statistics."),
                            opener("about."), opener("stop.")};
    return surroundings;
  }
  bool LogOnFromTray(std::wstring_view name) override {
    done_ += "log on " + std::string(name.begin(), name.end()) + ".";
    return logon_.LogOn(name);
  }
  void LogOffFromTray() override {
    done_ += "log off.";
    logon_.LogOff(1);
  }

  void Send(UINT event) { ::SendMessageW(tray_.Window(), WM_USER + 1, 0, event); }
  void Choose(UINT command) {
    machine_.AnswerMenus({command});
    Send(WM_RBUTTONUP);
  }
  void DoubleClick() { Send(WM_LBUTTONDBLCLK); }
  NOTIFYICONDATAW Shown() const {
    return platform::NotificationIcon(tray_.Window(), 0).value_or(NOTIFYICONDATAW{});
  }

  // What the tray did, in order, and what happens while a part is open.
  std::string done_;
  std::function<void()> whileOpen_;
  HelpSystem help_;
  StopRequest stop_;
  TrayController tray_{Surroundings()};
};

TEST_F(TrayControllerTest, CommandsDoWhatTheirItemsSayAndSomeNeedAUser) {
  // Neither without a user nor without a help viewer, nor when nothing is chosen.
  for (const UINT command : {4u, 13u, 12u, 0u, 2u, 99u})
    Choose(command);
  EXPECT_EQ(done_, "");
  LogOn(L"Bo");
  const std::pair<UINT, const char*> cases[] = {
      {4, "settings."},
      {5, "statistics."},
      {11, "about."},
      {13, "connection."},
      {7, "log on ."},
      {14, "log off.log on Admin."},
      {15, "log off.log on User."},
      {6, "log off."},
      {1, "log off.stop."},
  };
  for (const auto& [command, done] : cases) {
    done_.clear();
    Choose(command);
    EXPECT_EQ(done_, done) << command;
  }
  EXPECT_THAT(machine_.MessageBoxes(), IsEmpty());
}

TEST_F(TrayControllerTest, AMissingPartIsNotified) {
  TraySurroundings bare = Surroundings();
  bare.openers = {};
  const TrayController tray(bare);
  machine_.AnswerMenus({5});
  ::SendMessageW(tray.Window(), WM_USER + 1, 0, WM_RBUTTONUP);
  ASSERT_THAT(machine_.MessageBoxes(), SizeIs(1));
  const platform::MessageBoxRequest box = machine_.MessageBoxes()[0];
  EXPECT_EQ(box.caption, L"Quillgate");
  EXPECT_EQ(box.text, catalogue_.GetMessageText(10009));
  EXPECT_EQ(box.type, static_cast<UINT>(MB_OK | MB_ICONERROR));
}

TEST_F(TrayControllerTest, AFailureOfTheDatabaseIsNotifiedAndTheTrayGoesOn) {
  whileOpen_ = [] { throw DBerror(L"no such table", 1); };
  Choose(5);
  ASSERT_THAT(machine_.MessageBoxes(), SizeIs(1));
  EXPECT_EQ(machine_.MessageBoxes()[0].text, L"A database error was detected:\n\nno such table");
  whileOpen_ = {};
  Choose(5);
  EXPECT_EQ(done_, "statistics.statistics.");
}

TEST_F(TrayControllerTest, EachUserWhoLogsOnIsRemindedOnceToLogOff) {
  const struct {
    const wchar_t* system;
    const wchar_t* user;
    bool doubleClick, reminded;
  } cases[] = {
      {L"QUILLGATE", L"", false, false},    {L"QUILLGATE", L"", true, false},
      {L"QUILLGATE", L"Anna", false, true}, {L"QUILLGATE", L"Anna", false, false},
      {L"QUILLGATE", L"Bo", true, true},    {L"WINDOWS", L"Cid", false, false},
      {L"WINDOWS", L"Cid", true, true},
  };
  for (const auto& each : cases) {
    logon_.LogOff(1);
    Use(each.system);
    Expect(each.user);
    const std::size_t before = machine_.NotificationChanges().size();
    each.doubleClick ? DoubleClick() : Choose(7);
    EXPECT_EQ(machine_.NotificationChanges().size() - before, each.reminded) << each.user;
  }
  const NOTIFYICONDATAW balloon = machine_.NotificationChanges().back().second;
  EXPECT_STREQ(balloon.szInfoTitle, L"Quillgate - Reminder");
  EXPECT_STREQ(balloon.szInfo, catalogue_.GetMessageText(20018).c_str());
  EXPECT_EQ(balloon.dwInfoFlags, NIIF_INFO);
  EXPECT_EQ(settings_.GetSetting(L"REMINDER_Bo", {}), L"1");
}

TEST_F(TrayControllerTest, ADoubleClickOpensWhatTheUserMaySee) {
  const struct {
    const wchar_t* system;
    const wchar_t* user;
    std::wstring_view adminsOnly;
    const char* opened;
  } cases[] = {{L"QUILLGATE", L"Anna", kNo, "statistics."},
               {L"QUILLGATE", L"Anna", kYes, "connection."},
               {L"QUILLGATE", L"Bo", kYes, "statistics."},
               {L"NONE", L"User", kNo, "connection."}};
  for (const auto& each : cases) {
    settings_.SetSetting(SettingKey::kStatisticsForAdmins, each.adminsOnly);
    Use(each.system);
    LogOn(each.user);
    done_.clear();
    DoubleClick();
    EXPECT_EQ(done_, each.opened) << each.user;
  }
}

TEST_F(TrayControllerTest, WhileSomethingIsOpenOrOthersLockItClicksAreIgnored) {
  LogOn(L"Bo");
  const auto click = [this] {
    Choose(13);
    DoubleClick();
  };
  whileOpen_ = click;
  Choose(5);
  EXPECT_EQ(done_, "statistics.");
  whileOpen_ = {};
  tray_.Lock();
  { const IndicatorLock dialog(tray_); }
  click();
  EXPECT_EQ(done_, "statistics.");
  EXPECT_THAT(machine_.Menus(), SizeIs(1));
  tray_.Unlock();
  DoubleClick();
  EXPECT_EQ(done_, "statistics.statistics.");
}

TEST_F(TrayControllerTest, AStopOverTheMenuLeavesWhatIsChosenUndone) {
  platform::SetMenuTracker([this](const platform::TrackedMenu&) {
    stop_.Raise();
    return 5u;
  });
  Send(WM_RBUTTONUP);
  Send(WM_RBUTTONUP);
  EXPECT_EQ(done_, "");
}

TEST_F(TrayControllerTest, OnlyTheRightButtonOverAKnownCursorOpensTheMenu) {
  for (const UINT event : {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_RBUTTONDOWN})
    Send(event);
  machine_.SetCursorPosition(std::nullopt);
  Choose(5);
  EXPECT_THAT(machine_.Menus(), IsEmpty());
  EXPECT_EQ(done_, "");
}

TEST_F(TrayControllerTest, TheMenuIsDrawnByItsOwnerAtTheCursorInTheLanguageOfNow) {
  LogOn(L"Bo");
  machine_.SetCursorPosition(POINT{300, 200});
  Choose(0);
  catalogue_.SetInterfaceLanguage(1053);
  Choose(0);
  ASSERT_THAT(machine_.Menus(), SizeIs(2));
  const platform::TrackedMenu menu = machine_.Menus()[0];
  EXPECT_EQ(menu.place.x, 300);
  EXPECT_EQ(menu.place.y, 200);
  EXPECT_EQ(menu.flags & TPM_RETURNCMD, TPM_RETURNCMD);
  ASSERT_THAT(menu.items, SizeIs(9));
  for (const platform::TrackedItem& item : menu.items) {
    EXPECT_EQ(item.isOwnerDrawn, !item.isSeparator);
    EXPECT_EQ(item.isDefault, item.command == 5);
  }
  const platform::TrackedItem& help = menu.items[6];
  EXPECT_EQ(help.text, L"Help");
  EXPECT_NE(help.data, 0u);
  EXPECT_THAT(help.submenu, SizeIs(3));
  EXPECT_EQ(menu.items[0].data, 0u);
  EXPECT_EQ(menu.items[0].text, L"Log off");
  EXPECT_EQ(machine_.Menus()[1].items[0].text, L"Logga ut");
}

TEST_F(TrayControllerTest, StartsHiddenWithTheProgramsNameAndShowsTheGate) {
  EXPECT_STREQ(Shown().szTip, L"Quillgate");
  EXPECT_EQ(Shown().dwState, NIS_HIDDEN);
  GateIndicator& indicator = tray_;
  indicator.SetIcon(GateIcon::kEnabled);
  indicator.SetTip(L"tip");
  indicator.Show();
  EXPECT_NE(Shown().hIcon, nullptr);
  EXPECT_STREQ(Shown().szTip, L"tip");
  EXPECT_EQ(Shown().dwState, 0u);
  indicator.ShowMessage(L"text", L"title", BalloonIcon::kError, 3);
  EXPECT_STREQ(Shown().szInfo, L"text");
  EXPECT_STREQ(Shown().szInfoTitle, L"title");
  EXPECT_EQ(Shown().dwInfoFlags, NIIF_ERROR);
  EXPECT_EQ(tray_.LastMessageKind(), 3);
}

}  // namespace
}  // namespace quillgate
