// The setup wizard on the screen, by clicks and keys: every path to its end, what is refused on the
// way, and what is in the database afterwards.
#include "wizard/setup_wizard.h"

#include <QApplication>
#include <QCheckBox>
#include <QMessageBox>
#include <QTreeView>

#include "frame/desktop/frame_test.h"
#include "frame/desktop/sheet_user.h"
#include "grid/grid_notifications.h"
#include "program/program_test.h"

namespace quillgate {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const QString kTitle = "Quillgate Setup Wizard";

class WizardUser : public SheetUser {
 public:
  using SheetUser::SheetUser;

  void AwaitFocusOn(QWidget* widget) {
    script.Await([&] { return widget->hasFocus(); }, "focus on " + widget->objectName());
  }
  // From the first page on to that of the logon system, and on with one.
  void ChooseSystem(int button) {
    Go(kNext);
    Click(IDC_TYPE_ADVANCED);
    Go(kNext);
    Click(button);
    Go(kNext);
  }

  // --- the list of users ---
  void Select(int row) {
    auto* list = Get<QTreeView>(IDC_DETAILS_USERS);
    script.Do([&] { list->setCurrentIndex(list->model()->index(row, 0)); });
  }
  QStringList Cells(int column) {
    auto* list = Get<QTreeView>(IDC_DETAILS_USERS);
    QStringList cells;
    script.Do([&] {
      for (int row = 0; row < list->model()->rowCount(); ++row)
        cells << list->model()->index(row, column).data().toString();
    });
    return cells;
  }
  void AwaitName(const QString& name) {
    auto* field = Get<QLineEdit>(IDC_DETAILS_NAME);
    script.Await([&] { return field->text() == name; }, name);
  }
};

class SetupWizardTest : public WithUsers<FrameTest> {
 protected:
  // The user presses a last button, unless the wizard closes by itself.
  void Run(int last, const std::function<void(WizardUser&)>& act) {
    DesktopScript script(UserOf(kTitle, last, [&](DesktopScript& running, QWidget* window) {
      WizardUser user(running, window);
      act(user);
    }));
    const auto configure = [](const std::function<bool()>& store) { return store(); };
    EXPECT_TRUE(SetupWizard({ui_, database_, settings_, configure}).Run());
  }
  std::wstring System() { return settings_.GetSetting(SettingKey::kLogonSystem, L"-"); }
  std::shared_ptr<const User> Stored(LogonSystem system, const wchar_t* name) {
    return UserCollection(system, database_).Find(name);
  }
};

TEST_F(SetupWizardTest, TheSimplePathSetsTheOverridePasswordAndTheCommonRestrictions) {
  Run(kFinish, [&](WizardUser& user) {
    user.Go(kNext);
    EXPECT_TRUE(user.Get<QAbstractButton>(IDC_TYPE_SIMPLE)->isChecked());
    user.Go(kNext);
    user.Enter(IDC_OVERRIDE_PASSWORD, "lark");
    user.Enter(IDC_OVERRIDE_CONFIRM, "Lark");
    user.Press(kNext);
    EXPECT_EQ(CloseBox(user.script), "The passwords you entered do not match.");
    user.AwaitFocus(IDC_OVERRIDE_CONFIRM);
    user.Enter(IDC_OVERRIDE_CONFIRM, "lark");
    user.Go(kNext);
    EXPECT_FALSE(user.IsEnabled(IDC_RESTRICTIONS_LIMIT_AMOUNT));
    user.Click(IDC_RESTRICTIONS_LIMIT);
    user.Enter(IDC_RESTRICTIONS_LIMIT_AMOUNT, "0");
    for (const int button : {kNext, kBack}) {
      user.Press(button);
      EXPECT_EQ(CloseBox(user.script),
                "The value 0 is invalid. It must be in the range 1 - 999999.");
      user.AwaitFocus(IDC_RESTRICTIONS_LIMIT_AMOUNT);
    }
    user.Enter(IDC_RESTRICTIONS_LIMIT_AMOUNT, "90");
    user.Choose(IDC_RESTRICTIONS_LIMIT_PERIOD, 1);
    user.Click(IDC_RESTRICTIONS_HOURS);
    QWidget* hours = user.script.AwaitWindow("Connection hours");
    user.script.Click(hours, kGridMouseMoveId);
    user.script.Click(hours, IDOK);
    user.script.AwaitNoWindow("Connection hours");
    user.Go(kBack);
    EXPECT_EQ(user.Text(IDC_OVERRIDE_PASSWORD), "lark");
    user.Go(kNext);
    user.Go(kNext);
    EXPECT_THAT(Rows(L"Users_None"), IsEmpty()) << "nothing is stored yet";
    user.AwaitReady(kFinish);
  });
  EXPECT_EQ(System(), L"NONE");
  EXPECT_TRUE(Stored(LogonSystem::kNone, L"Admin")->CheckPassword(L"lark"));
  const auto everybody = Stored(LogonSystem::kNone, L"User");
  EXPECT_EQ(everybody->TimeLimit().amount, 90);
  EXPECT_EQ(everybody->TimeLimit().period, LimitPeriod::kWeek);
  EXPECT_EQ(std::ranges::count(everybody->ConnectHours(), true), 1);
}

TEST_F(SetupWizardTest, TheQuillgatePathMakesTheAdministratorAndKeepsTheEditsOfSeveralUsers) {
  Run(kFinish, [&](WizardUser& user) {
    user.ChooseSystem(IDC_CHOICE_QUILLGATE);
    user.Press(kNext);
    EXPECT_EQ(CloseBox(user.script), "Invalid user name.");
    user.Enter(IDC_ADMINISTRATOR_NAME, "Anna");
    user.Press(kNext);
    EXPECT_TRUE(CloseBox(user.script, IDNO).startsWith("By not entering a password"));
    user.Enter(IDC_ADMINISTRATOR_PASSWORD, "swan");
    user.Enter(IDC_ADMINISTRATOR_CONFIRM, "swan");
    user.Go(kNext);
    EXPECT_EQ(user.Cells(0), QStringList("Anna"));
    EXPECT_EQ(user.Cells(1), QStringList("Administrator User"));
    EXPECT_FALSE(user.IsEnabled(IDC_DETAILS_NAME) || user.IsEnabled(IDC_DETAILS_PASSWORD));
    user.Click(IDC_DETAILS_REMOVE);
    CloseBox(user.script, IDYES);
    EXPECT_TRUE(CloseBox(user.script).startsWith("Sorry, but the user could not be removed."));
    for (const char* const name : {"Bo", "Cy"}) {
      user.Click(IDC_DETAILS_NEW);
      user.AwaitName("New user");
      user.AwaitFocus(IDC_DETAILS_NAME);
      user.Enter(IDC_DETAILS_NAME, name);
      user.Enter(IDC_DETAILS_PASSWORD, QString("of ") + name);
    }
    user.Enter(IDC_DETAILS_NAME, "Bo");
    user.Select(0);
    EXPECT_TRUE(CloseBox(user.script).startsWith("An error occurred"));
    user.AwaitFocus(IDC_DETAILS_NAME);
    user.Enter(IDC_DETAILS_NAME, "Cy");
    user.Select(1);
    user.AwaitName("Bo");
    user.Click(IDC_DETAILS_LIMIT);
    user.Enter(IDC_DETAILS_LIMIT_AMOUNT, "45");
    user.Select(0);
    user.AwaitName("Anna");
    EXPECT_FALSE(user.Get<QCheckBox>(IDC_DETAILS_LIMIT)->isChecked());
    user.Go(kBack);
    EXPECT_EQ(user.Text(IDC_ADMINISTRATOR_NAME), "Anna");
    user.Go(kNext);
    user.Select(1);
    user.AwaitName("Bo");
    EXPECT_EQ(user.Text(IDC_DETAILS_LIMIT_AMOUNT), "45");
    user.Go(kNext);
    database_.DbExecute(
        L"CREATE TRIGGER Full BEFORE INSERT ON Users_Quillgate BEGIN SELECT "
        L"RAISE(FAIL, 'full'); END;");
    user.AwaitReady(kFinish);
    user.Press(kFinish);
    CloseBox(user.script);
    EXPECT_EQ(System(), L"-");
    database_.DbExecute(L"DROP TRIGGER Full;");
  });
  EXPECT_EQ(System(), L"QUILLGATE");
  const auto anna = Stored(LogonSystem::kQuillgate, L"Anna");
  EXPECT_TRUE(anna->IsAdministrator() && anna->CheckPassword(L"swan"));
  const auto bo = Stored(LogonSystem::kQuillgate, L"Bo");
  EXPECT_TRUE(!bo->IsAdministrator() && bo->CheckPassword(L"of Bo"));
  EXPECT_EQ(bo->TimeLimit().amount, 45);
  EXPECT_TRUE(Stored(LogonSystem::kQuillgate, L"Cy")->CheckPassword(L"of Cy"));
}

TEST_F(SetupWizardTest, TheWindowsPathTakesAccountsOfTheMachineTheFirstAsAdministrator) {
  RegisterLogonPackage();
  machine_.SetAccounts(std::vector<platform::LocalAccount>{{L"karl", L"", 1}, {L"bea", L"", 2}});
  Run(kFinish, [&](WizardUser& user) {
    user.ChooseSystem(IDC_CHOICE_WINDOWS);
    for (const int control : {IDC_DETAILS_REMOVE, IDC_DETAILS_NAME, IDC_DETAILS_HOURS})
      EXPECT_FALSE(user.IsEnabled(control)) << control;
    for (const char* const name : {"bea", "karl"}) {
      user.Click(IDC_DETAILS_NEW);
      user.script.Click(user.script.AwaitWindow("Add new user"), IDOK);
      user.AwaitName(name);
    }
    EXPECT_FALSE(user.IsEnabled(IDC_DETAILS_NAME) || user.IsEnabled(IDC_DETAILS_PASSWORD));
    EXPECT_EQ(user.Cells(1), (QStringList{"Administrator User", ""}));
    user.Go(kBack);
    EXPECT_TRUE(user.Get<QAbstractButton>(IDC_CHOICE_WINDOWS)->isChecked());
    user.Go(kNext);
    user.Go(kNext);
    user.AwaitReady(kFinish);
  });
  EXPECT_EQ(System(), L"WINDOWS");
  EXPECT_TRUE(Stored(LogonSystem::kWindows, L"bea")->IsAdministrator());
  EXPECT_FALSE(Stored(LogonSystem::kWindows, L"karl")->IsAdministrator());
}

TEST_F(SetupWizardTest, CancelAsksAndNoKeepsWhatWasEnteredAndYesStoresNothing) {
  Run(0, [&](WizardUser& user) {
    const auto cancel = [&](int answer) {
      user.Press(IDCANCEL);
      QWidget* box = nullptr;
      const auto isOpen = [&] {
        for (QWidget* each : QApplication::topLevelWidgets()) {
          if (each->isVisible() && qobject_cast<QMessageBox*>(each) != nullptr) box = each;
        }
        return box != nullptr;
      };
      user.script.Await(isOpen, "question");
      EXPECT_TRUE(user.script.TextOf(box).startsWith("Are you sure you want to exit the Wizard?"));
      EXPECT_EQ(box->windowTitle(), kTitle);
      user.script.Click(box, answer);
    };
    user.Go(kNext);
    user.Click(IDC_TYPE_ADVANCED);
    user.Go(kNext);
    EXPECT_FALSE(user.IsEnabled(IDC_CHOICE_WINDOWS) || user.IsEnabled(IDC_CHOICE_WINDOWS_TEXT));
    user.Go(kNext);
    user.Enter(IDC_OVERRIDE_PASSWORD, "lark");
    user.Enter(IDC_OVERRIDE_CONFIRM, "lark");
    user.Go(kNext);
    user.Go(kBack);
    cancel(IDNO);
    user.Go(kNext);
    user.Go(kBack);
    EXPECT_EQ(user.Text(IDC_OVERRIDE_CONFIRM), "lark");
    cancel(IDYES);
  });
  EXPECT_EQ(System(), L"-");
  EXPECT_THAT(Rows(L"Users_None"), IsEmpty());
}

TEST_F(SetupWizardTest, EveryPageBeginsWithTheFocusOnItsFirstFieldAndEnterGoesOn) {
  Run(0, [&](WizardUser& user) {
    user.script.Do([&] { user.sheet->move(5, 5); });
    user.Go(kNext);
    const auto pass = [&](const std::vector<int>& fields, bool types) {
      for (const int field : fields) {
        user.AwaitFocusOn(user.Get(field));
        if (types) user.script.Key(Qt::Key_A);
        if (field != fields.back()) user.script.Key(Qt::Key_Tab);
      }
      user.Go([&] { user.script.Key(Qt::Key_Return); });
    };
    pass({IDC_TYPE_SIMPLE}, false);
    pass({IDC_OVERRIDE_PASSWORD, IDC_OVERRIDE_CONFIRM}, true);
    pass({IDC_RESTRICTIONS_HOURS, IDC_RESTRICTIONS_LIMIT}, false);
    user.AwaitFocusOn(user.script.Child(user.sheet, kFinish));
    EXPECT_EQ(user.sheet->pos(), QPoint(5, 5)) << "where the user has put it";
    user.script.Key(Qt::Key_Return);
  });
  EXPECT_TRUE(Stored(LogonSystem::kNone, L"Admin")->CheckPassword(L"a"));
}

}  // namespace
}  // namespace quillgate
