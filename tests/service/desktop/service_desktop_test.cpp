// The service with a desktop: the whole of it on the test's thread, a script as the user and as the
// service control manager.
#include <QApplication>

#include "desktop/dialog_driver.h"
#include "frame/desktop/sheet_user.h"
#include "resources/resource.h"
#include "service/service_main_thread.h"
#include "service/service_test.h"
#include "service/service_window.h"

namespace quillgate {
namespace {

using namespace std::chrono_literals;

const QString kLogonTitle = "Quillgate - Log on";

class ServiceDesktopTest : public ServiceTest {
 protected:
  ServiceDesktopTest() {
    machine_.UseDesktop();
    machine_.ShowMessageBoxes();
    machine_.Time().HoldSleepers();
    Set(SettingKey::kFirstStart, L"0");
    Set(SettingKey::kLanguage, L"1033");
  }

  // The service from start to stop, while the script plays the others. It ends with Stop.
  void Run(std::function<void(DesktopScript&)> script) {
    DesktopScript others(std::move(script));
    ServiceMainThread(module_, objects_).Run();
    // The loop may end before it takes WM_QUIT, which shall not reach the next test.
    MSG message{};
    ::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
  }
  // The stop, and the pauses of the service's end.
  void Stop() {
    module_.HandleControl(SERVICE_CONTROL_STOP);
    machine_.Time().Release();
  }
  // The first cycle is over, and the message loop runs.
  void AwaitStart(DesktopScript& script) {
    ASSERT_TRUE(machine_.Time().AwaitSleepers(1));
    script.Do([] {});
  }

  void AwaitLoggedOn(DesktopScript& script, const std::wstring& name) {
    script.Await([&] { return LoggedOn() == name; }, "logon");
  }
  int Count(const QString& title) {
    return static_cast<int>(std::ranges::count_if(
        QApplication::topLevelWidgets(),
        [&](const QWidget* each) { return each->isVisible() && each->windowTitle() == title; }));
  }
};

TEST_F(ServiceDesktopTest, TheTrayShowsTheGateAndTheEventLogDoesNot) {
  Run([this](DesktopScript& script) {
    AwaitStart(script);
    EXPECT_THAT(machine_.EventTexts(),
                testing::Not(testing::Contains(L"Quillgate - Internet connection enabled")));
    Stop();
  });
  const auto changes = machine_.NotificationChanges();
  ASSERT_FALSE(changes.empty());
  EXPECT_EQ(changes.front().first, static_cast<DWORD>(NIM_ADD));
  EXPECT_EQ(changes.back().first, static_cast<DWORD>(NIM_DELETE));
  EXPECT_EQ(std::wstring(changes.back().second.szTip), L"Quillgate - Internet connection enabled");
}

TEST_F(ServiceDesktopTest, ADesktopThatComesLaterGetsTheIconAsItIsThen) {
  ::unsetenv("QT_QPA_PLATFORM");
  objects_.EnterDesktop();
  objects_.BeginSession();
  ServiceWindow window(objects_);
  window.Create();
  EXPECT_TRUE(machine_.NotificationChanges().empty());
  machine_.UseDesktop();
  for (int each = 0; each < 2; ++each)
    ::SendMessageW(window.Window(), WM_DISPLAYCHANGE, 32, MAKELPARAM(800, 600));
  const auto changes = machine_.NotificationChanges();
  EXPECT_EQ(
      std::ranges::count(changes, DWORD{NIM_ADD}, [](const auto& each) { return each.first; }), 1);
  EXPECT_EQ(std::wstring(changes.back().second.szTip), L"Quillgate - Internet connection enabled");
  EXPECT_EQ(changes.back().second.dwState & NIS_HIDDEN, 0u);
  objects_.LeaveDesktop();
}

TEST_F(ServiceDesktopTest, TheFirstStartBeginsWithTheWizardWhoseAdministratorThenLogsOn) {
  Set(SettingKey::kFirstStart, L"1");
  Run([this](DesktopScript& script) {
    SheetUser wizard(script, script.AwaitWindow("Quillgate Setup Wizard"));
    EXPECT_EQ(LoggedOn(), L"User") << "enforced meanwhile";
    EXPECT_TRUE(machine_.NotificationChanges().empty()) << "the icon comes later";
    wizard.Go(kNext);
    wizard.Click(IDC_TYPE_ADVANCED);
    wizard.Go(kNext);
    wizard.Click(IDC_CHOICE_QUILLGATE);
    wizard.Go(kNext);
    wizard.Enter(IDC_ADMINISTRATOR_NAME, "Anna");
    wizard.Enter(IDC_ADMINISTRATOR_PASSWORD, "swan");
    wizard.Enter(IDC_ADMINISTRATOR_CONFIRM, "swan");
    wizard.Go(kNext);
    wizard.Go(kNext);
    wizard.AwaitReady(kFinish);
    wizard.Press(kFinish);
    QWidget* dialog = script.AwaitWindow(kLogonTitle);
    EXPECT_EQ(LoggedOn(), L"");
    script.Type(dialog, IDC_LOGON_PASSWORD, "swan");
    script.Click(dialog, IDOK);
    AwaitLoggedOn(script, L"Anna");
    EXPECT_TRUE(objects_.Session().IsOnline());
    Stop();
  });
  const auto changes = machine_.NotificationChanges();
  EXPECT_TRUE(std::ranges::any_of(changes, [](const auto& each) {
    return std::wstring(each.second.szInfoTitle) == L"Welcome to Quillgate!";
  }));
}

TEST_F(ServiceDesktopTest, ControlsDoNotWaitForTheDialogNorStackAnotherOne) {
  Set(SettingKey::kLogonSystem, L"QUILLGATE");
  AddUser(LogonSystem::kQuillgate, L"Anna", L"secret");
  Run([this](DesktopScript& script) {
    AwaitStart(script);
    module_.HandleControl(kControlWindowsLogon);
    QWidget* dialog = script.AwaitWindow(kLogonTitle);
    for (int repeated = 0; repeated < 2; ++repeated) {
      module_.HandleControl(kControlWindowsLogon);
      module_.HandleControl(kControlWindowsLogoff);
    }
    script.Do([&] { EXPECT_EQ(Count(kLogonTitle), 1); });
    script.Type(dialog, IDC_LOGON_PASSWORD, "secret");
    script.Click(dialog, IDOK);
    AwaitLoggedOn(script, L"Anna");
    script.Do([&] { EXPECT_EQ(Count(kLogonTitle), 0); });
    EXPECT_TRUE(objects_.Session().IsOnline());
    Stop();
  });
}

TEST_F(ServiceDesktopTest, ALogOffUnderTheDialogClosesTheGateAndTheAnswerOpensItAgain) {
  AddUser(LogonSystem::kNone, L"User");
  AddUser(LogonSystem::kNone, L"Admin", L"secret");
  Run([this](DesktopScript& script) {
    AwaitStart(script);
    // As the tray does with a click; the dialog opens there.
    script.Post([this] { objects_.Logons().LogOnFromTray(L"Admin"); });
    QWidget* dialog = script.AwaitWindow(kLogonTitle);
    EXPECT_EQ(LoggedOn(), L"") << "the session before it has ended";
    module_.HandleControl(kControlWindowsLogon);
    EXPECT_EQ(LoggedOn(), L"User") << "asks nothing, so it waits for nobody";
    EXPECT_TRUE(objects_.Session().IsOnline());
    script.Await(
        [this] {
          machine_.Time().Advance(1s);
          return Query(L"SELECT User FROM CrashLog;") == DbRows{{L"User"}};
        },
        "monitor's cycle under the dialog");
    module_.HandleControl(kControlWindowsLogoff);
    EXPECT_EQ(LoggedOn(), L"");
    EXPECT_FALSE(objects_.Session().IsOnline());
    script.Type(dialog, IDC_LOGON_PASSWORD, "secret");
    script.Click(dialog, IDOK);
    AwaitLoggedOn(script, L"Admin");
    EXPECT_TRUE(objects_.Session().IsOnline());
    Stop();
  });
}

// What is open when the stop comes, and what opens it.
struct OpenAtStop {
  bool firstStart;  // opens by itself
  UINT trayClick;   // 0: the logon control opens it
  const wchar_t* system;
  const wchar_t* user;      // null: there is none
  const wchar_t* password;  // if there is one, a logon without it opens the box over the dialog
  const char* title;        // empty: a menu
  const wchar_t* loggedOn;
};

class StopTest : public ServiceDesktopTest, public testing::WithParamInterface<OpenAtStop> {};

constexpr OpenAtStop kOpenAtStop[] = {
    {true, 0, L"QUILLGATE", nullptr, L"", "Quillgate Setup Wizard", L""},
    {false, 0, L"QUILLGATE", nullptr, L"", "Add new user", L""},
    {false, 0, L"QUILLGATE", L"Anna", L"", "Quillgate - Log on", L""},
    {false, 0, L"QUILLGATE", L"Anna", L"secret", "Quillgate", L""},
    {false, WM_LBUTTONDBLCLK, L"NONE", L"User", L"", "Connection information", L"User"},
    {false, WM_RBUTTONUP, L"NONE", L"User", L"", "", L"User"},
};
INSTANTIATE_TEST_SUITE_P(Open, StopTest, testing::ValuesIn(kOpenAtStop));

TEST_P(StopTest, EndsTheServiceUnderWhateverIsOpen) {
  const OpenAtStop& given = GetParam();
  Set(SettingKey::kFirstStart, given.firstStart ? L"1" : L"0");
  Set(SettingKey::kLogonSystem, given.system);
  machine_.ShowMenus();
  if (given.user != nullptr) AddUser(LogonSystemOf(given.system), given.user, given.password);

  Run([&](DesktopScript& script) {
    AwaitStart(script);
    if (given.trayClick != 0) {
      const HWND tray = machine_.NotificationChanges().front().second.hWnd;
      ::PostMessageW(tray, WM_USER + 1, 0, static_cast<LPARAM>(given.trayClick));
    } else if (!given.firstStart) {
      module_.HandleControl(kControlWindowsLogon);
      if (*given.password != 0) script.Click(script.AwaitWindow(kLogonTitle), IDOK);
    }
    const auto isOpen = [&] {
      const bool isMenu = *given.title == 0;
      return isMenu ? QApplication::activePopupWidget() != nullptr : Count(given.title) == 1;
    };
    script.Await(isOpen, "question");
    Stop();
  });

  EXPECT_EQ(LoggedOn(), given.loggedOn);
  EXPECT_THAT(machine_.NotificationChanges().back().first, static_cast<DWORD>(NIM_DELETE));
  EXPECT_THAT([this] { Execute(L"DELETE FROM CrashLog;"); },
              testing::Throws<DBerror>(testing::Property(&DBerror::Message, L"No database open.")));
  if (given.user != nullptr) return;
  objects_.GetDatabase().DbOpen();
  EXPECT_THAT(Query(L"SELECT Name FROM Users_Quillgate;"), testing::IsEmpty());
  EXPECT_EQ(Setting(SettingKey::kFirstStart), given.firstStart ? L"1" : L"0");
}

}  // namespace
}  // namespace quillgate
