// The settings sheet on the screen, by clicks and keys: who may do what, what is refused, and what
// applied settings mean to the running service.
#include "settings/settings_sheet.h"

#include <QApplication>
#include <QCheckBox>
#include <QHelpEvent>
#include <QToolTip>

#include "frame/desktop/frame_test.h"
#include "frame/desktop/sheet_user.h"
#include "program/with_session.h"

namespace quillgate {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

class SettingsSheetTest : public WithSession<WithUsers<FrameTest>>, protected LogonSystemControl {
 protected:
  SettingsSheetTest() { Use(L"QUILLGATE", {L"Bo", L"Cy"}, {L"Anna"}); }

  void Use(std::wstring_view system, const std::vector<std::wstring>& names,
           const std::vector<std::wstring>& administrators) {
    UseSystem(system, names, administrators);
    users_->SaveAll();
  }
  void LogOn(const std::wstring& name) {
    prompts_.name = identity_.name = name;
    logon_.LogOn({});
    EXPECT_EQ(LoggedOn(), name);
  }
  // The user presses OK or Cancel in the end, unless the sheet closes by itself.
  void Open(int last, const std::function<void(SheetUser&)>& act) {
    DesktopScript script(UserOf("Settings", last, [&](DesktopScript& running, QWidget* window) {
      SheetUser user(running, window);
      act(user);
    }));
    SettingsSheet({ui_, catalogue_, database_, settings_, calendar_, logon_, identity_, *this})
        .Open(*session_);
  }
  std::shared_ptr<UserCollection> Users() const override { return users_; }
  // As the service does it.
  bool Switch(const std::function<bool()>& store) override {
    if (!store()) return false;
    logon_.LogOff(1);
    const LogonSystem system = CurrentLogonSystem(settings_);
    users_ = std::make_shared<UserCollection>(system, database_);
    logon_.SetUsers(users_);
    if (system == LogonSystem::kNone) logon_.LogOnAs(kOverrideUserName);
    return true;
  }
  std::wstring Setting(SettingKey key) { return settings_.GetSetting(key, L"(none)"); }
};

// What appears where the pointer rests over a control.
QString TipOver(SheetUser& user, int control) {
  QWidget* widget = user.Get(control);
  user.script.Await([] { return !QToolTip::isVisible(); }, "end of the tip before");
  QString tip;
  user.script.Do([&] {
    const QPoint inside(5, 5);
    QHelpEvent rest(QEvent::ToolTip, inside, widget->mapToGlobal(inside));
    QApplication::sendEvent(widget, &rest);
    if (QToolTip::isVisible()) tip = QToolTip::text();
    QToolTip::hideText();
  });
  return tip;
}

TEST_F(SettingsSheetTest, ARegularUserChangesHisPasswordAndNothingElse) {
  LogOn(L"Bo");
  Open(IDOK, [&](SheetUser& user) {
    EXPECT_EQ(user.Get<QComboBox>(IDC_USERS)->count(), 1);
    EXPECT_EQ(user.Text(IDC_PASSWORD_HINT), "Press the button to change your password.");
    for (const int control : {IDC_NEW_USER, IDC_REMOVE_USER, IDC_CHANGE_HOURS, IDC_TIME_LIMIT,
                              IDC_TIME_LIMIT_AMOUNT, IDC_DOWNLOAD_LIMIT, IDC_ADMINISTRATOR})
      EXPECT_FALSE(user.IsEnabled(control)) << control;
    user.Click(IDC_CHANGE_PASSWORD);
    QWidget* dialog = user.script.AwaitWindow("Change password");
    user.script.Type(dialog, IDC_PASSWORD, "lark");
    user.script.Type(dialog, IDC_PASSWORD_AGAIN, "Lark");
    user.script.Click(dialog, IDOK);
    EXPECT_EQ(CloseBox(user.script), "The passwords you entered do not match.");
    auto* first = qobject_cast<QLineEdit*>(user.script.Child(dialog, IDC_PASSWORD));
    user.script.Await([&] { return first->hasFocus() && first->selectedText() == "lark"; },
                      "focus");
    user.script.Type(dialog, IDC_PASSWORD, "Lark");
    user.script.Click(dialog, IDOK);
    EXPECT_EQ(CloseBox(user.script), "The password was changed.");
  });
  EXPECT_TRUE(users_->Find(L"Bo")->CheckPassword(L"Lark"));
  EXPECT_TRUE(
      UserCollection(LogonSystem::kQuillgate, database_).Find(L"Bo")->CheckPassword(L"Lark"));
}

TEST_F(SettingsSheetTest, EditsOfSeveralUsersAreAppliedTogetherOrCancelled) {
  LogOn(L"Anna");
  const auto edit = [](SheetUser& user) {
    user.Turn(1);
    EXPECT_FALSE(user.IsEnabled(IDC_TIME_LIMIT_AMOUNT));
    user.Choose(IDC_USERS, 1);
    user.Click(IDC_TIME_LIMIT);
    user.Enter(IDC_TIME_LIMIT_AMOUNT, "0");
    user.Choose(IDC_USERS, 2);
    EXPECT_EQ(CloseBox(user.script), "The value 0 is invalid. It must be in the range 1 - 999999.");
    EXPECT_EQ(user.Get<QComboBox>(IDC_USERS)->currentIndex(), 1) << "the user stays";
    user.AwaitFocus(IDC_TIME_LIMIT_AMOUNT);
    user.Enter(IDC_TIME_LIMIT_AMOUNT, "999999");
    user.Choose(IDC_TIME_LIMIT_PERIOD, 2);
    user.Choose(IDC_USERS, 2);
    EXPECT_FALSE(user.Get<QCheckBox>(IDC_TIME_LIMIT)->isChecked());
    user.Click(IDC_ADMINISTRATOR);
    user.Choose(IDC_USERS, 0);
    EXPECT_TRUE(user.IsEnabled(IDC_ADMINISTRATOR)) << "Cy will be another one";
    user.Choose(IDC_USERS, 1);
    EXPECT_EQ(user.Text(IDC_TIME_LIMIT_AMOUNT), "999999");
  };
  Open(IDCANCEL, edit);
  EXPECT_FALSE(users_->Find(L"Bo")->TimeLimit().enabled || users_->Find(L"Cy")->IsAdministrator());
  Open(IDOK, edit);
  EXPECT_EQ(users_->Find(L"Bo")->TimeLimit().amount, 999'999);
  EXPECT_EQ(users_->Find(L"Bo")->TimeLimit().period, LimitPeriod::kMonth);
  EXPECT_TRUE(users_->Find(L"Cy")->IsAdministrator());
}

TEST_F(SettingsSheetTest, NewAndRemoveTakeEffectAtOnceAndRefuseWhatCannotBe) {
  LogOn(L"Anna");
  Open(IDCANCEL, [&](SheetUser& user) {
    user.Turn(1);
    EXPECT_FALSE(user.IsEnabled(IDC_ADMINISTRATOR)) << "the last one";
    const auto add = [&](const QString& name) {
      user.Click(IDC_NEW_USER);
      QWidget* dialog = user.script.AwaitWindow("Add new user");
      user.script.Type(dialog, IDC_INPUT_EDIT, name);
      user.script.Click(dialog, IDOK);
    };
    for (const QString name : {"O'Brien", "  ", ""}) {
      add(name);
      EXPECT_EQ(CloseBox(user.script), "Invalid user name.") << name.toStdString();
    }
    add("Bo");
    EXPECT_TRUE(CloseBox(user.script).startsWith("An error occurred"));
    add("Dan");
    user.AwaitChosen(IDC_USERS, "Dan");
    EXPECT_FALSE(user.Get<QCheckBox>(IDC_ADMINISTRATOR)->isChecked());
    user.Choose(IDC_USERS, 0);
    user.Click(IDC_REMOVE_USER);
    EXPECT_TRUE(CloseBox(user.script).startsWith("You cannot remove"));
    user.Choose(IDC_USERS, 1);
    for (const int answer : {IDNO, IDYES}) {
      user.Click(IDC_REMOVE_USER);
      CloseBox(user.script, answer);
    }
    EXPECT_EQ(user.Get<QComboBox>(IDC_USERS)->currentText(), "Cy");
  });
  EXPECT_THAT(users_->SortedNames(), ElementsAre(L"Anna", L"Cy", L"Dan"));
  EXPECT_EQ(Rows(L"Users_Quillgate").size(), 3u);
}

TEST_F(SettingsSheetTest, AppliedRulesHoldAtOnceAndASessionThatMayGoOnGoesOn) {
  LogOn(L"Anna");
  Pass(90s);
  Open(IDOK, [&](SheetUser& user) {
    user.Turn(1);
    user.Click(IDC_TIME_LIMIT);
    user.Enter(IDC_TIME_LIMIT_AMOUNT, "2");
    user.Press(kApply);
    user.script.Await([&] { return users_->Find(L"Anna")->TimeLimit().enabled; }, "apply");
    EXPECT_TRUE(session_->IsOnline());
    EXPECT_EQ(session_->SecondsOnline(), 90u);
    user.Enter(IDC_TIME_LIMIT_AMOUNT, "1");
  });
  EXPECT_FALSE(session_->IsOnline());
  EXPECT_EQ(Query(L"SELECT Seconds FROM ConnLog;"), (DbRows{{L"90"}}));
}

TEST_F(SettingsSheetTest, AThresholdIsRefusedOutsideItsRangeAndLetsTheWarningComeAgain) {
  User anna = *users_->Find(L"Anna");
  anna.SetTimeLimit({true, 12, LimitPeriod::kDay});
  users_->Replace(anna);
  LogOn(L"Anna");
  Pass(130s);
  session_->RunEnforcementCycle();
  const auto given = indicator_.balloons.size();
  Open(IDOK, [&](SheetUser& user) {
    for (const QString text : {"0", "1441"}) {
      user.Enter(IDC_TIME_WARNING_AMOUNT, text);
      user.Turn(text == "0" ? 1 : 0);
      user.Press(kApply);
      EXPECT_EQ(CloseBox(user.script),
                "The value " + text + " is invalid. It must be in the range 1 - 1440.");
      user.AwaitFocus(IDC_TIME_WARNING_AMOUNT);
    }
    user.Enter(IDC_TIME_WARNING_AMOUNT, "1440");
  });
  session_->RunEnforcementCycle();
  EXPECT_EQ(indicator_.balloons.size(), given + 1);
  EXPECT_EQ(Setting(SettingKey::kTimeWarningMinutes), L"1440");
}

TEST_F(SettingsSheetTest, AnotherLogonSystemIsAppliedBeforeItsUsersAreChanged) {
  LogOn(L"Anna");
  Pass(30s);
  UserCollection none(LogonSystem::kNone, database_);
  EnsureBuiltInUsers(none);
  Open(IDOK, [&](SheetUser& user) {
    EXPECT_FALSE(user.IsEnabled(IDC_SYSTEM_WINDOWS));
    user.Click(IDC_SYSTEM_NONE);
    user.Turn(1);
    EXPECT_TRUE(CloseBox(user.script).startsWith("Because the logon system has changed"));
    EXPECT_FALSE(user.IsEnabled(IDC_NEW_USER) || user.IsEnabled(IDC_CHANGE_PASSWORD));
    user.Press(kApply);
    user.AwaitChosen(IDC_USERS, "Admin");
    EXPECT_FALSE(user.IsEnabled(IDC_NEW_USER));
    EXPECT_TRUE(user.IsEnabled(IDC_CHANGE_PASSWORD));
    EXPECT_TRUE(user.Text(IDC_PASSWORD_HINT).contains("security override"));
  });
  EXPECT_EQ(Setting(SettingKey::kLogonSystem), L"NONE");
  EXPECT_EQ(LoggedOn(), L"Admin");
  EXPECT_TRUE(session_->IsOnline());
  EXPECT_EQ(Query(L"SELECT User, Seconds FROM ConnLog;"), (DbRows{{L"Anna", L"30"}}));
}

TEST_F(SettingsSheetTest, WindowsCanBeChosenOnceItsPackageHasReportedSomebodyAndTellsWhyNot) {
  LogOn(L"Anna");
  const auto expect = [&](const std::wstring& reported, const QString& tip) {
    identity_.name = reported;
    Open(IDCANCEL, [&](SheetUser& user) {
      EXPECT_EQ(user.IsEnabled(IDC_SYSTEM_WINDOWS), tip.isEmpty());
      EXPECT_EQ(TipOver(user, IDC_SYSTEM_WINDOWS).left(20), tip);
    });
  };
  expect(L"anna", "<p>A component requi");
  RegisterLogonPackage();
  expect(L"", "<p>You need to reboo");
  expect(L"anna", "");
}

TEST_F(SettingsSheetTest, LanguageCalendarAdapterAndRestrictionsTakeEffect) {
  machine_.Interfaces().Set(
      {platform::SimulatedCard(2, L"eth0"), platform::SimulatedCard(3, L"eth1")});
  settings_.SetSetting(SettingKey::kFirstDayOfWeek, L"7");
  LogOn(L"Anna");
  Count(5'000, 100);
  Open(IDOK, [](SheetUser& user) {
    user.Turn(2);
    EXPECT_EQ(user.Get<QComboBox>(IDC_FIRST_DAY)->currentText(), "Sunday");
  });
  EXPECT_EQ(Setting(SettingKey::kFirstDayOfWeek), L"7");
  Open(IDOK, [&](SheetUser& user) {
    user.Choose(IDC_LANGUAGE, 1);
    user.Turn(2);
    user.Choose(IDC_FIRST_DAY, 3);
    user.Choose(IDC_ADAPTER, 1);
    user.Click(IDC_LOCAL_TRAFFIC);
    user.Click(IDC_STATISTICS_RESTRICTED);
    user.Press(kApply);
    user.script.Await([&] { return user.sheet->windowTitle() == "Inst\u00e4llningar"; }, "Swedish");
    EXPECT_EQ(user.Get<QComboBox>(IDC_FIRST_DAY)->currentText(), "Onsdag");
  });
  EXPECT_EQ(Setting(SettingKey::kLanguage), L"29");
  EXPECT_EQ(calendar_.GetFirstDayOfWeek(), 3);
  EXPECT_EQ(Setting(SettingKey::kAdapter), L"eth1");
  EXPECT_EQ(Setting(SettingKey::kLocalTrafficAllowed), L"YES");
  EXPECT_EQ(Setting(SettingKey::kStatisticsForAdmins), L"YES");
  EXPECT_EQ(session_->BytesReceived(), 5'000u) << "no jump";
  machine_.Interfaces().Count(L"eth1", 700, 0);
  EXPECT_EQ(session_->BytesReceived(), 5'700u);
}

TEST_F(SettingsSheetTest, TheSheetClosesAndStoresNothingOnceItsUserIsLoggedOffOrTheServiceStops) {
  for (const bool stops : {false, true}) {
    LogOn(L"Anna");
    Open(0, [&](SheetUser& user) {
      user.Turn(1);
      user.Click(IDC_TIME_LIMIT);
      user.script.Do([&] {
        if (stops) {
          stop_.Raise();
          ::PostQuitMessage(0);
        } else {
          logon_.LogOff(1);
          Pass(1s);
        }
      });
    });
    EXPECT_FALSE(users_->Find(L"Anna")->TimeLimit().enabled) << stops;
  }
}

TEST_F(SettingsSheetTest, UnderWindowsAccountsOfTheMachineBecomeUsers) {
  Use(L"WINDOWS", {}, {L"anna"});
  machine_.SetAccounts(std::nullopt);
  LogOn(L"anna");
  Open(IDCANCEL, [&](SheetUser& user) {
    user.Turn(1);
    for (const int control : {IDC_REMOVE_USER, IDC_CHANGE_PASSWORD, IDC_PASSWORD_HINT})
      EXPECT_FALSE(user.IsEnabled(control)) << control;
    user.Click(IDC_NEW_USER);
    EXPECT_EQ(CloseBox(user.script), "Could not retrieve Windows user list.");
    machine_.SetAccounts(std::vector<platform::LocalAccount>{
        {L"anna", L"", 1}, {L"karl", L"", 2}, {L"bea", L"", 3}});
    user.Click(IDC_NEW_USER);
    QWidget* dialog = user.script.AwaitWindow("Add new user");
    auto* list = qobject_cast<QComboBox*>(user.script.Child(dialog, IDC_ACCOUNT));
    user.script.Do([&] {
      EXPECT_EQ(list->count(), 2);
      EXPECT_EQ(list->itemText(0), "bea");
    });
    user.script.Click(dialog, IDOK);
    user.AwaitChosen(IDC_USERS, "bea");
  });
  EXPECT_THAT(users_->SortedNames(), ElementsAre(L"anna", L"bea"));
}

}  // namespace
}  // namespace quillgate
