// The service with a desktop: the whole of it on the test's thread, a script as the user and as the
// service control manager.
#include <QApplication>

#include "desktop/dialog_driver.h"
#include "resources/resource.h"
#include "service/service_main_thread.h"
#include "service/service_test.h"

namespace quillgate {
namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::IsEmpty;
using testing::Not;

const QString kLogonTitle = "Quillgate - Log on";
const QString kFirstUserTitle = "Add new user";

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

  void AddUserWithPassword(LogonSystem system, const wchar_t* name, const wchar_t* password) {
    User user(name);
    user.SetPassword(password);
    EXPECT_TRUE(user.Save(UserTableOf(system), objects_.GetDatabase()));
  }
  // What the tray would do with a click; the dialogs open there.
  void LogOnFromTray(DesktopScript& script, std::wstring_view name) {
    script.Post([this, name] { objects_.Logons().LogOnFromTray(name); });
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
    EXPECT_THAT(machine_.EventTexts(), Not(Contains(L"Quillgate - Internet connection enabled")));
    Stop();
  });
  const auto changes = machine_.NotificationChanges();
  ASSERT_FALSE(changes.empty());
  EXPECT_EQ(changes.front().first, static_cast<DWORD>(NIM_ADD));
  EXPECT_EQ(changes.back().first, static_cast<DWORD>(NIM_DELETE));
  EXPECT_EQ(std::wstring(changes.back().second.szTip), L"Quillgate - Internet connection enabled");
}

TEST_F(ServiceDesktopTest, TheFirstStartAsksForTheFirstUserAndLogsItOn) {
  Set(SettingKey::kFirstStart, L"1");
  Set(SettingKey::kLogonSystem, L"QUILLGATE");
  Run([this](DesktopScript& script) {
    QWidget* question = script.AwaitWindow(kFirstUserTitle);
    script.Type(question, IDC_INPUT_EDIT, "Anna");
    script.Click(question, IDOK);
    script.Click(script.AwaitWindow("Quillgate"), IDOK);
    script.Click(script.AwaitWindow(kLogonTitle), IDOK);
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
  AddUserWithPassword(LogonSystem::kQuillgate, L"Anna", L"secret");
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
  AddUserWithPassword(LogonSystem::kNone, L"User", L"");
  AddUserWithPassword(LogonSystem::kNone, L"Admin", L"secret");
  Run([this](DesktopScript& script) {
    AwaitStart(script);
    LogOnFromTray(script, L"Admin");
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
enum class Opener { kFirstStart, kLogonControl, kWrongPassword, kDoubleClick, kRightClick };
struct OpenAtStop {
  Opener opener;
  const wchar_t* system;
  const wchar_t* user;  // there is one; null: there is none
  const char* title;    // empty: a menu
  const wchar_t* loggedOn;
};

class StopTest : public ServiceDesktopTest, public testing::WithParamInterface<OpenAtStop> {
 protected:
  void Open(DesktopScript& script) {
    const auto click = [this](UINT message) {
      const HWND window = machine_.NotificationChanges().front().second.hWnd;
      ::PostMessageW(window, WM_USER + 1, 0, static_cast<LPARAM>(message));
    };
    switch (GetParam().opener) {
      case Opener::kFirstStart:
        return;
      case Opener::kLogonControl:
        return module_.HandleControl(kControlWindowsLogon);
      case Opener::kWrongPassword:
        LogOnFromTray(script, L"");
        return script.Click(script.AwaitWindow(kLogonTitle), IDOK);
      case Opener::kDoubleClick:
        return click(WM_LBUTTONDBLCLK);
      case Opener::kRightClick:
        return click(WM_RBUTTONUP);
    }
  }
  bool IsOpen() {
    const QString title = GetParam().title;
    return title.isEmpty() ? QApplication::activePopupWidget() != nullptr : Count(title) == 1;
  }
};

constexpr OpenAtStop kOpenAtStop[] = {
    {Opener::kFirstStart, L"QUILLGATE", nullptr, "Add new user", L""},
    {Opener::kLogonControl, L"QUILLGATE", nullptr, "Add new user", L""},
    {Opener::kLogonControl, L"QUILLGATE", L"Anna", "Quillgate - Log on", L""},
    {Opener::kWrongPassword, L"QUILLGATE", L"Anna", "Quillgate", L""},
    {Opener::kDoubleClick, L"NONE", L"User", "Connection information", L"User"},
    {Opener::kRightClick, L"NONE", L"User", "", L"User"},
};
INSTANTIATE_TEST_SUITE_P(Open, StopTest, testing::ValuesIn(kOpenAtStop));

TEST_P(StopTest, EndsTheServiceUnderWhateverIsOpen) {
  Set(SettingKey::kFirstStart, GetParam().opener == Opener::kFirstStart ? L"1" : L"0");
  Set(SettingKey::kLogonSystem, GetParam().system);
  machine_.ShowMenus();
  if (GetParam().user != nullptr) {
    AddUserWithPassword(CurrentLogonSystem(objects_.GetSettings()), GetParam().user,
                        GetParam().opener == Opener::kWrongPassword ? L"secret" : L"");
  }
  Run([this](DesktopScript& script) {
    AwaitStart(script);
    Open(script);
    script.Await([this] { return IsOpen(); }, "question");
    Stop();
  });
  EXPECT_EQ(LoggedOn(), GetParam().loggedOn);
  EXPECT_THAT(machine_.NotificationChanges().back().first, static_cast<DWORD>(NIM_DELETE));
  EXPECT_EQ(Failure(L"DELETE FROM CrashLog;"), L"No database open.");
  if (GetParam().user != nullptr) return;
  objects_.GetDatabase().DbOpen();
  EXPECT_THAT(Query(L"SELECT Name FROM Users_Quillgate;"), IsEmpty());
}

}  // namespace
}  // namespace quillgate
