// The connection sheet on the screen: what it shows, how it lives, and its end.
#include <windows.h>

#include <commctrl.h>

#include <htmlhelp.h>

#include <prsht.h>

#include "connection_test.h"
#include "frame/help_topics.h"
#include "platform/kernel/modules.h"

namespace quillgate {
namespace {

using testing::ElementsAre;

const QString kTitle = "Connection information";

std::vector<std::wstring> helpRequests;

// "number" of a popup, or the place of a topic.
HWND WINAPI RecordHelp(HWND, LPCWSTR file, UINT command, DWORD_PTR data) {
  if (command == HH_DISPLAY_TOPIC) helpRequests.emplace_back(file);
  if (command == HH_DISPLAY_TEXT_POPUP)
    helpRequests.push_back(std::to_wstring(reinterpret_cast<const HH_POPUP*>(data)->idString));
  return nullptr;
}

class ConnectionSheetTest : public ConnectionTest {
 protected:
  // Opens the sheet for the one who is logged on; the user does what the script says, then presses
  // Close unless the sheet is to close by itself.
  void Open(std::function<void(DesktopScript&, QWidget*)> user, bool close = true) {
    DesktopScript script([&](DesktopScript& running) {
      QWidget* window = running.AwaitWindow(kTitle);
      user(running, window);
      if (close) running.Click(window, IDCANCEL);
      running.AwaitNoWindow(kTitle);
    });
    sheet_.Open(*session_);
  }
  static QString Text(DesktopScript& script, QWidget* window, int control) {
    return script.TextOf(script.Child(window, control));
  }
  // Moves the clock and waits for the refresh, which shows in the duration.
  void Tick(DesktopScript& script, QWidget* window, const QString& duration) {
    Pass(std::chrono::seconds(1));
    script.Await([&] { return Find(window, IDC_DURATION) == duration; }, "refresh at " + duration);
  }
  // In the window thread.
  static QString Find(QWidget* window, int control);
};

QString ConnectionSheetTest::Find(QWidget* window, int control) {
  for (QWidget* each : window->findChildren<QWidget*>()) {
    const HWND handle = reinterpret_cast<HWND>(each->property("windowHandle").toULongLong());
    if (handle == nullptr || ::GetWindowLongPtrW(handle, GWLP_ID) != control) continue;
    wchar_t text[100] = L"";
    ::GetWindowTextW(handle, text, 100);
    return QString::fromWCharArray(text);
  }
  return "(none)";
}

TEST_F(ConnectionSheetTest, ShowsTheSessionAndWhatWasUsedInEachPeriod) {
  Finished(L"60", L"2097152", L"1048576", L"2005-03-14 10:00:00");
  Finished(L"3600", L"0", L"1048576", L"2005-03-02 10:00:00");
  Finished(L"3600", L"0", L"1048576", L"2005-02-28 10:00:00");
  logon_.LogOn({});
  Pass(std::chrono::seconds(3725));
  Count(524288, 1234);
  Open([&](DesktopScript& script, QWidget* window) {
    const struct {
      int control;
      const char* text;
    } expected[] = {{IDC_USER_NAME, "Anna"},
                    {IDC_STATUS, "Enabled"},
                    {IDC_DURATION, "01:02:05"},
                    {IDC_RECEIVED, "524,288"},
                    {IDC_SENT, "1,234"},
                    {IDC_DOWNLOAD_RATE, "Wait"},
                    {IDC_TIME_ONLINE_TODAY, "01:03:05"},
                    {IDC_TIME_ONLINE_WEEK, "01:03:05"},
                    {IDC_TIME_ONLINE_MONTH, "02:03:05"},
                    {IDC_DOWNLOADS_TODAY, "1.50"},
                    {IDC_DOWNLOADS_WEEK, "1.50"},
                    {IDC_DOWNLOADS_MONTH, "2.50"},
                    {IDC_UPLOADS_TODAY, "2.00"},
                    {IDC_SESSION_GROUP, "Session information"},
                    {IDC_DOWNLOADS_LABEL, "Downloads (MB):"},
                    {IDCANCEL, "Close"}};
    for (const auto& each : expected) {
      script.Do([&] { EXPECT_EQ(Find(window, each.control), each.text) << each.control; });
    }
    script.Do([&] {
      const HWND sheet = reinterpret_cast<HWND>(window->property("windowHandle").toULongLong());
      EXPECT_FALSE(::IsWindowVisible(::GetDlgItem(sheet, IDOK)));
    });
  });
}

TEST_F(ConnectionSheetTest, WaitBlinksUntilEightReadingsMakeARate) {
  logon_.LogOn({});
  Open([&](DesktopScript& script, QWidget* window) {
    std::vector<QString> rates{Text(script, window, IDC_DOWNLOAD_RATE)};
    for (int second = 1; second <= 8; ++second) {
      Count(8192, 16384);
      Tick(script, window, QString("00:00:%1").arg(second, 2, 10, QChar('0')));
      rates.push_back(Text(script, window, IDC_DOWNLOAD_RATE));
    }
    EXPECT_THAT(rates, ElementsAre("Wait", "", "Wait", "", "Wait", "", "Wait", "7.00", "8.00"));
    EXPECT_EQ(Text(script, window, IDC_UPLOAD_RATE), "16.00");
  });
}

TEST_F(ConnectionSheetTest, ASecondOpeningGoesOnWithTheRatesAndWaitsAgain) {
  logon_.LogOn({});
  const auto run = [this](DesktopScript& script, QWidget* window, int from, int to) {
    for (int second = from; second <= to; ++second) {
      Count(8192, 0);
      Tick(script, window, QString("00:00:%1").arg(second, 2, 10, QChar('0')));
    }
  };
  Open([&](DesktopScript& script, QWidget* window) { run(script, window, 1, 8); });
  Open([&](DesktopScript& script, QWidget* window) {
    EXPECT_EQ(Text(script, window, IDC_DOWNLOAD_RATE), "Wait");
    run(script, window, 9, 15);
    EXPECT_EQ(Text(script, window, IDC_DOWNLOAD_RATE), "7.00");
  });
}

TEST_F(ConnectionSheetTest, ALogOffClosesItAtTheNextRefresh) {
  logon_.LogOn({});
  Open(
      [&](DesktopScript& script, QWidget*) {
        script.Do([&] { logon_.LogOff(1); });
        Pass(std::chrono::seconds(1));
      },
      false);
}

TEST_F(ConnectionSheetTest, WithNobodyLoggedOnItClosesAtOnce) {
  sheet_.Open(*session_);
}

TEST_F(ConnectionSheetTest, ANewSessionReadsThePeriodsAgainAndForgetsTheRates) {
  logon_.LogOn({});
  Pass(std::chrono::seconds(100));
  Count(1048576, 0);
  Open([&](DesktopScript& script, QWidget* window) {
    script.Do([&] { EXPECT_EQ(Find(window, IDC_TIME_ONLINE_TODAY), "00:01:40"); });
    script.Do([&] {
      logon_.LogOff(1);
      logon_.LogOn({});
    });
    Tick(script, window, "00:00:01");
    EXPECT_EQ(Text(script, window, IDC_TIME_ONLINE_TODAY), "00:01:41");
    EXPECT_EQ(Text(script, window, IDC_DOWNLOADS_TODAY), "1.00");
    EXPECT_EQ(Text(script, window, IDC_RECEIVED), "0");
    for (int second = 2; second <= 8; ++second)
      Tick(script, window, QString("00:00:%1").arg(second, 2, 10, QChar('0')));
    EXPECT_EQ(Text(script, window, IDC_DOWNLOAD_RATE), "0.00");
  });
}

TEST_F(ConnectionSheetTest, AClosedGateHasNoDuration) {
  logon_.LogOn({});
  session_->Disable();
  Open([&](DesktopScript& script, QWidget* window) {
    EXPECT_EQ(Text(script, window, IDC_STATUS), "Disabled");
    EXPECT_EQ(Text(script, window, IDC_DURATION), "-");
    EXPECT_EQ(Text(script, window, IDC_RECEIVED), "0");
    EXPECT_EQ(Text(script, window, IDC_TIME_ONLINE_TODAY), "00:00:00");
  });
}

TEST_F(ConnectionSheetTest, TheCommonUserHasNoName) {
  UseSystem(L"NONE");
  EnsureBuiltInUsers(*users_);
  logon_.LogOn(L"User");
  Open([&](DesktopScript& script, QWidget* window) {
    EXPECT_EQ(Text(script, window, IDC_USER_NAME), "-");
  });
}

TEST_F(ConnectionSheetTest, ADatabaseThatFailsLeavesALivePageWithoutPeriods) {
  logon_.LogOn({});
  database_.DbExecute(L"ALTER TABLE ConnLog RENAME TO Gone;");
  DesktopScript script([&](DesktopScript& running) {
    auto* box = qobject_cast<QMessageBox*>(running.AwaitWindow(kBoxTitle));
    running.Do([&] {
      ASSERT_NE(box, nullptr);
      EXPECT_EQ(box->text(), "A database error was detected:\n\nno such table: ConnLog");
    });
    running.Key(Qt::Key_Return);
    running.AwaitNoWindow(kBoxTitle);
    QWidget* window = running.AwaitWindow(kTitle);
    Tick(running, window, "00:00:01");
    EXPECT_EQ(Text(running, window, IDC_DOWNLOADS_MONTH), "-");
    database_.DbExecute(L"ALTER TABLE Gone RENAME TO ConnLog;");
    Tick(running, window, "00:00:02");
    EXPECT_EQ(Text(running, window, IDC_DOWNLOADS_MONTH), "0.00");
    running.Click(window, IDCANCEL);
    running.AwaitNoWindow(kTitle);
  });
  sheet_.Open(*session_);
}

TEST_F(ConnectionSheetTest, TheDetailsAreTheAdapters) {
  logon_.LogOn({});
  Open([&](DesktopScript& script, QWidget* window) {
    script.Do([&] {
      const HWND sheet = reinterpret_cast<HWND>(window->property("windowHandle").toULongLong());
      PropSheet_SetCurSel(sheet, nullptr, 1);
      const HWND list = ::GetDlgItem(PropSheet_GetCurrentPageHwnd(sheet), IDC_PROPERTIES);
      const auto cell = [list](int row, int column) {
        wchar_t text[100] = L"";
        LVITEMW item{};
        item.iSubItem = column;
        item.pszText = text;
        item.cchTextMax = 100;
        ::SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
                       reinterpret_cast<LPARAM>(&item));
        return std::wstring(text);
      };
      EXPECT_EQ(cell(0, 0), L"Network adapter");
      EXPECT_EQ(cell(0, 1), L"Ethernet card");
      EXPECT_EQ(cell(1, 0), L"MAC address");
      EXPECT_EQ(cell(1, 1), L"02-00-5E-10-00-02");
    });
  });
}

TEST_F(ConnectionSheetTest, HelpIsThatOfTheControlElseOfThePage) {
  platform::RegisterBuiltInModule(L"hhctrl.ocx", {{"#15", reinterpret_cast<FARPROC>(RecordHelp)}});
  help_.SetHelpFile(kHelpFileName);
  helpRequests.clear();
  logon_.LogOn({});
  Open([&](DesktopScript& script, QWidget* window) {
    script.Do([&] {
      const HWND sheet = reinterpret_cast<HWND>(window->property("windowHandle").toULongLong());
      PropSheet_SetCurSel(sheet, nullptr, 1);
      ::SetFocus(::GetDlgItem(PropSheet_GetCurrentPageHwnd(sheet), IDC_PROPERTIES));
    });
    script.Key(Qt::Key_F1);
    script.Do([&] {
      const HWND sheet = reinterpret_cast<HWND>(window->property("windowHandle").toULongLong());
      HELPINFO request{};
      request.cbSize = sizeof(request);
      request.iContextType = HELPINFO_WINDOW;
      ::SendMessageW(PropSheet_GetCurrentPageHwnd(sheet), WM_HELP, 0,
                     reinterpret_cast<LPARAM>(&request));
    });
  });
  platform::UnregisterBuiltInModule(L"hhctrl.ocx");
  EXPECT_THAT(helpRequests,
              testing::UnorderedElementsAre(
                  std::to_wstring(HelpPopupNumber(IDD_CONNECTION_DETAILS, IDC_PROPERTIES)),
                  L"quillgate.chm::/html/conn-details.html"));
}

}  // namespace
}  // namespace quillgate
