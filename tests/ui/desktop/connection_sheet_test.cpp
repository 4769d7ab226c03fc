// The connection sheet on the screen: what it shows, how it lives, and its end.
#include "ui/connection_sheet.h"

#include <prsht.h>

#include <QLabel>
#include <filesystem>

#include "desktop/resident_memory.h"
#include "frame/desktop/frame_test.h"
#include "frame/help_topics.h"
#include "frame/list_view.h"
#include "platform/kernel/handle_table.h"
#include "program/recorded_help.h"
#include "program/with_session.h"

namespace quillgate {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

const QString kTitle = "Connection information";

class ConnectionSheetTest : public WithSession<WithUsers<FrameTest>> {
 protected:
  ConnectionSheetTest() { logon_.LogOn({}); }

  // Opens the sheet for the one who is logged on.
  void Open(int last, const Act& user) {
    DesktopScript script(UserOf(kTitle, last, user));
    sheet_.Open(*session_);
  }
  // One second passes; the refresh shows in the duration.
  void Tick(DesktopScript& script, QWidget* window, int seconds) {
    const QString expected = QString("00:00:%1").arg(seconds, 2, 10, QChar('0'));
    const auto* duration = qobject_cast<QLabel*>(script.Child(window, IDC_DURATION));
    Pass(1s);
    script.Await([&] { return duration->text() == expected; }, "refresh");
  }

  ConnectionSheet sheet_{{ui_, settings_, database_, calendar_, logon_}};
};

TEST_F(ConnectionSheetTest, ShowsTheSessionAndWhatWasUsedInEachPeriod) {
  Insert(L"ConnLog", {L"Anna", L"60", L"2097152", L"1048576", L"2005-03-14 10:00:00"});
  Insert(L"ConnLog", {L"Anna", L"3600", L"0", L"1048576", L"2005-03-02 10:00:00"});
  Insert(L"ConnLog", {L"Anna", L"3600", L"0", L"1048576", L"2005-02-28 10:00:00"});
  Pass(3725s);
  Count(524288, 1234);
  const std::pair<int, const char*> cases[] = {
      {IDC_USER_NAME, "Anna"},
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
      {IDCANCEL, "Close"},
  };
  Open(IDCANCEL, [&](DesktopScript& script, QWidget* window) {
    for (const auto& [control, text] : cases)
      EXPECT_EQ(script.TextOf(window, control), text) << control;
    EXPECT_FALSE(::IsWindowVisible(::GetDlgItem(script.HandleOf(window), IDOK)));
  });
}

TEST_F(ConnectionSheetTest, WaitBlinksUntilEightReadingsMakeARateAndAgainInTheNextOpening) {
  Open(IDCANCEL, [&](DesktopScript& script, QWidget* window) {
    QStringList rates{script.TextOf(window, IDC_DOWNLOAD_RATE)};
    for (int second = 1; second <= 8; ++second) {
      Count(8192, 16384);
      Tick(script, window, second);
      rates << script.TextOf(window, IDC_DOWNLOAD_RATE);
    }
    EXPECT_EQ(rates, (QStringList{"Wait", "", "Wait", "", "Wait", "", "Wait", "7.00", "8.00"}));
    EXPECT_EQ(script.TextOf(window, IDC_UPLOAD_RATE), "16.00");
  });
  Open(IDCANCEL, [&](DesktopScript& script, QWidget* window) {
    EXPECT_EQ(script.TextOf(window, IDC_DOWNLOAD_RATE), "Wait");
    for (int second = 9; second <= 15; ++second) {
      Count(8192, 0);
      Tick(script, window, second);
    }
    EXPECT_EQ(script.TextOf(window, IDC_DOWNLOAD_RATE), "7.00");
  });
}

TEST_F(ConnectionSheetTest, ALogOffClosesItAtTheNextRefreshAndItDoesNotOpenAgain) {
  Open(0, [&](DesktopScript& script, QWidget*) {
    script.Do([&] { logon_.LogOff(1); });
    Pass(1s);
  });
  sheet_.Open(*session_);
}

TEST_F(ConnectionSheetTest, ANewSessionReadsThePeriodsAgainAndForgetsTheRates) {
  Pass(100s);
  Count(1048576, 0);
  Open(IDCANCEL, [&](DesktopScript& script, QWidget* window) {
    EXPECT_EQ(script.TextOf(window, IDC_TIME_ONLINE_TODAY), "00:01:40");
    script.Do([&] { logon_.LogOn({}); });
    Tick(script, window, 1);
    EXPECT_EQ(script.TextOf(window, IDC_TIME_ONLINE_TODAY), "00:01:41");
    EXPECT_EQ(script.TextOf(window, IDC_DOWNLOADS_TODAY), "1.00");
    EXPECT_EQ(script.TextOf(window, IDC_RECEIVED), "0");
    for (int second = 2; second <= 8; ++second)
      Tick(script, window, second);
    EXPECT_EQ(script.TextOf(window, IDC_DOWNLOAD_RATE), "0.00");
  });
}

TEST_F(ConnectionSheetTest, TheCommonUsersNameAndAClosedGatesDurationAreDashes) {
  UseSystem(L"NONE", {L"User"});
  logon_.LogOn(L"User");
  session_->Disable();
  Open(IDCANCEL, [&](DesktopScript& script, QWidget* window) {
    EXPECT_EQ(script.TextOf(window, IDC_USER_NAME), "-");
    EXPECT_EQ(script.TextOf(window, IDC_STATUS), "Disabled");
    EXPECT_EQ(script.TextOf(window, IDC_DURATION), "-");
    EXPECT_EQ(script.TextOf(window, IDC_RECEIVED), "0");
    EXPECT_EQ(script.TextOf(window, IDC_TIME_ONLINE_TODAY), "00:00:00");
  });
}

TEST_F(ConnectionSheetTest, ADatabaseThatFailsLeavesALivePageWithoutPeriods) {
  database_.DbExecute(L"ALTER TABLE ConnLog RENAME TO Gone;");
  DesktopScript script([&](DesktopScript& running) {
    EXPECT_EQ(CloseBox(running), "A database error was detected:\n\nno such table: ConnLog");
    QWidget* window = running.AwaitWindow(kTitle);
    Tick(running, window, 1);
    EXPECT_EQ(running.TextOf(window, IDC_DOWNLOADS_MONTH), "-");
    database_.DbExecute(L"ALTER TABLE Gone RENAME TO ConnLog;");
    Tick(running, window, 2);
    EXPECT_EQ(running.TextOf(window, IDC_DOWNLOADS_MONTH), "0.00");
    running.Click(window, IDCANCEL);
  });
  sheet_.Open(*session_);
}

TEST_F(ConnectionSheetTest, TheDetailsAreTheAdaptersAndHelpIsThatOfTheControlElseOfThePage) {
  const RecordedHelp viewer;
  help_.SetHelpFile(kHelpFileName);
  Open(IDCANCEL, [&](DesktopScript& script, QWidget* window) {
    const HWND sheet = script.HandleOf(window);
    script.Do([&] {
      PropSheet_SetCurSel(sheet, nullptr, 1);
      const HWND page = PropSheet_GetCurrentPageHwnd(sheet);
      const ListView list(page, IDC_PROPERTIES);
      EXPECT_EQ(list.Cell(0, 0), L"Network adapter");
      EXPECT_EQ(list.Cell(0, 1), L"Simulated card 2");
      EXPECT_EQ(list.Cell(1, 0), L"MAC address");
      EXPECT_EQ(list.Cell(1, 1), L"02-00-5E-10-00-02");
      HELPINFO request{sizeof(request), HELPINFO_WINDOW, 0, nullptr, 0, {}};
      ::SendMessageW(page, WM_HELP, 0, reinterpret_cast<LPARAM>(&request));
      list.Focus();
    });
    script.Key(Qt::Key_F1);
  });
  const auto number = HelpPopupNumber(IDD_CONNECTION_DETAILS, IDC_PROPERTIES);
  EXPECT_THAT(RecordedHelp::TakeLog(),
              ElementsAre(L"begin", L"topic quillgate.chm::/html/conn-details.html",
                          L"popup " + std::to_wstring(number) + L" in quillgate.chm::/popups.txt"));
}

// Presses Close as soon as the sheet is there.
void CALLBACK CloseSheet(HWND, UINT, UINT_PTR timer, DWORD) noexcept {
  const HWND sheet = ::GetActiveWindow();
  if (sheet == nullptr) return;
  ::KillTimer(nullptr, timer);
  PropSheet_PressButton(sheet, PSBTN_CANCEL);
}

TEST_F(ConnectionSheetTest, ManyOpeningsLeaveNothingBehind) {
  const auto openMany = [this](int count) {
    for (int i = 0; i < count; ++i) {
      ::SetTimer(nullptr, 0, 10, CloseSheet);
      Pass(10ms);
      sheet_.Open(*session_);
      // What a service's loop does between two openings.
      MSG message{};
      while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        ::DispatchMessageW(&message);
    }
  };
  const auto openFiles = [] {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
  };
  openMany(50);
  const std::size_t handles = platform::Handles().Count();
  const auto files = openFiles();
  [[maybe_unused]] const long memory = ResidentBytes();
  openMany(200);
  EXPECT_EQ(platform::Handles().Count(), handles);
  EXPECT_EQ(openFiles(), files);
  // Sanitizers keep freed memory for a while, and find leaks by themselves.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
  EXPECT_LT(ResidentBytes(), memory + (256L << 10));
#endif
}

}  // namespace
}  // namespace quillgate
