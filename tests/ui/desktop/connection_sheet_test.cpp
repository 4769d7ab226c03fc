// The connection sheet on the screen: what it shows, how it lives, and its end.
#include "ui/connection_sheet.h"

#include <windows.h>

#include <commctrl.h>
#include <prsht.h>

#include <filesystem>

#include "desktop/resident_memory.h"
#include "frame/desktop/frame_test.h"
#include "frame/help_topics.h"
#include "platform/kernel/handle_table.h"
#include "program/recorded_help.h"
#include "program/with_session.h"

namespace quillgate {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

const QString kTitle = "Connection information";

std::wstring TextOf(HWND window) {
  wchar_t text[100] = L"";
  ::GetWindowTextW(window, text, 100);
  return text;
}

std::wstring CellOf(HWND list, int row, int column) {
  wchar_t text[100] = L"";
  ListView_GetItemText(list, row, column, text, 100);
  return text;
}

class ConnectionSheetTest : public WithSession<WithUsers<FrameTest>> {
 protected:
  // Opens the sheet for the one who is logged on; the user does what the script says, then presses
  // Close unless the sheet is to close by itself.
  void Open(const std::function<void(DesktopScript&, QWidget*)>& user, bool close = true) {
    DesktopScript script([&](DesktopScript& running) {
      QWidget* window = running.AwaitWindow(kTitle);
      user(running, window);
      if (close) running.Click(window, IDCANCEL);
      running.AwaitNoWindow(kTitle);
    });
    sheet_.Open(*session_);
  }
  static std::wstring Text(DesktopScript& script, QWidget* window, int control) {
    return TextOf(script.HandleOf(script.Child(window, control)));
  }
  // One second passes; the refresh shows in the duration.
  void Tick(DesktopScript& script, QWidget* window, int seconds) {
    const std::wstring expected =
        (seconds < 10 ? L"00:00:0" : L"00:00:") + std::to_wstring(seconds);
    const HWND duration = script.HandleOf(script.Child(window, IDC_DURATION));
    Pass(1s);
    script.Await([&] { return TextOf(duration) == expected; }, "refresh");
  }

  ConnectionSheet sheet_{{ui_, settings_, database_, calendar_, logon_}};
};

TEST_F(ConnectionSheetTest, ShowsTheSessionAndWhatWasUsedInEachPeriod) {
  Insert(L"ConnLog", {L"Anna", L"60", L"2097152", L"1048576", L"2005-03-14 10:00:00"});
  Insert(L"ConnLog", {L"Anna", L"3600", L"0", L"1048576", L"2005-03-02 10:00:00"});
  Insert(L"ConnLog", {L"Anna", L"3600", L"0", L"1048576", L"2005-02-28 10:00:00"});
  logon_.LogOn({});
  Pass(3725s);
  Count(524288, 1234);
  const std::pair<int, const wchar_t*> cases[] = {
      {IDC_USER_NAME, L"Anna"},
      {IDC_STATUS, L"Enabled"},
      {IDC_DURATION, L"01:02:05"},
      {IDC_RECEIVED, L"524,288"},
      {IDC_SENT, L"1,234"},
      {IDC_DOWNLOAD_RATE, L"Wait"},
      {IDC_TIME_ONLINE_TODAY, L"01:03:05"},
      {IDC_TIME_ONLINE_WEEK, L"01:03:05"},
      {IDC_TIME_ONLINE_MONTH, L"02:03:05"},
      {IDC_DOWNLOADS_TODAY, L"1.50"},
      {IDC_DOWNLOADS_WEEK, L"1.50"},
      {IDC_DOWNLOADS_MONTH, L"2.50"},
      {IDC_UPLOADS_TODAY, L"2.00"},
      {IDC_SESSION_GROUP, L"Session information"},
      {IDC_DOWNLOADS_LABEL, L"Downloads (MB):"},
      {IDCANCEL, L"Close"},
  };
  Open([&](DesktopScript& script, QWidget* window) {
    for (const auto& [control, text] : cases)
      EXPECT_EQ(Text(script, window, control), text) << control;
    EXPECT_FALSE(::IsWindowVisible(::GetDlgItem(script.HandleOf(window), IDOK)));
  });
}

TEST_F(ConnectionSheetTest, WaitBlinksUntilEightReadingsMakeARateAndAgainInTheNextOpening) {
  logon_.LogOn({});
  Open([&](DesktopScript& script, QWidget* window) {
    std::vector<std::wstring> rates{Text(script, window, IDC_DOWNLOAD_RATE)};
    for (int second = 1; second <= 8; ++second) {
      Count(8192, 16384);
      Tick(script, window, second);
      rates.push_back(Text(script, window, IDC_DOWNLOAD_RATE));
    }
    EXPECT_THAT(rates,
                ElementsAre(L"Wait", L"", L"Wait", L"", L"Wait", L"", L"Wait", L"7.00", L"8.00"));
    EXPECT_EQ(Text(script, window, IDC_UPLOAD_RATE), L"16.00");
  });
  Open([&](DesktopScript& script, QWidget* window) {
    EXPECT_EQ(Text(script, window, IDC_DOWNLOAD_RATE), L"Wait");
    for (int second = 9; second <= 15; ++second) {
      Count(8192, 0);
      Tick(script, window, second);
    }
    EXPECT_EQ(Text(script, window, IDC_DOWNLOAD_RATE), L"7.00");
  });
}

TEST_F(ConnectionSheetTest, ALogOffClosesItAtTheNextRefreshAndItDoesNotOpenAgain) {
  logon_.LogOn({});
  Open(
      [&](DesktopScript& script, QWidget*) {
        script.Do([&] { logon_.LogOff(1); });
        Pass(1s);
      },
      false);
  sheet_.Open(*session_);
}

TEST_F(ConnectionSheetTest, ANewSessionReadsThePeriodsAgainAndForgetsTheRates) {
  logon_.LogOn({});
  Pass(100s);
  Count(1048576, 0);
  Open([&](DesktopScript& script, QWidget* window) {
    EXPECT_EQ(Text(script, window, IDC_TIME_ONLINE_TODAY), L"00:01:40");
    script.Do([&] { logon_.LogOn({}); });
    Tick(script, window, 1);
    EXPECT_EQ(Text(script, window, IDC_TIME_ONLINE_TODAY), L"00:01:41");
    EXPECT_EQ(Text(script, window, IDC_DOWNLOADS_TODAY), L"1.00");
    EXPECT_EQ(Text(script, window, IDC_RECEIVED), L"0");
    for (int second = 2; second <= 8; ++second)
      Tick(script, window, second);
    EXPECT_EQ(Text(script, window, IDC_DOWNLOAD_RATE), L"0.00");
  });
}

TEST_F(ConnectionSheetTest, TheCommonUsersNameAndAClosedGatesDurationAreDashes) {
  UseSystem(L"NONE", {L"User"});
  logon_.LogOn(L"User");
  session_->Disable();
  Open([&](DesktopScript& script, QWidget* window) {
    EXPECT_EQ(Text(script, window, IDC_USER_NAME), L"-");
    EXPECT_EQ(Text(script, window, IDC_STATUS), L"Disabled");
    EXPECT_EQ(Text(script, window, IDC_DURATION), L"-");
    EXPECT_EQ(Text(script, window, IDC_RECEIVED), L"0");
    EXPECT_EQ(Text(script, window, IDC_TIME_ONLINE_TODAY), L"00:00:00");
  });
}

TEST_F(ConnectionSheetTest, ADatabaseThatFailsLeavesALivePageWithoutPeriods) {
  logon_.LogOn({});
  database_.DbExecute(L"ALTER TABLE ConnLog RENAME TO Gone;");
  DesktopScript script([&](DesktopScript& running) {
    EXPECT_EQ(CloseBox(running), "A database error was detected:\n\nno such table: ConnLog");
    QWidget* window = running.AwaitWindow(kTitle);
    Tick(running, window, 1);
    EXPECT_EQ(Text(running, window, IDC_DOWNLOADS_MONTH), L"-");
    database_.DbExecute(L"ALTER TABLE Gone RENAME TO ConnLog;");
    Tick(running, window, 2);
    EXPECT_EQ(Text(running, window, IDC_DOWNLOADS_MONTH), L"0.00");
    running.Click(window, IDCANCEL);
  });
  sheet_.Open(*session_);
}

TEST_F(ConnectionSheetTest, TheDetailsAreTheAdaptersAndHelpIsThatOfTheControlElseOfThePage) {
  const RecordedHelp viewer;
  help_.SetHelpFile(kHelpFileName);
  logon_.LogOn({});
  Open([&](DesktopScript& script, QWidget* window) {
    const HWND sheet = script.HandleOf(window);
    HWND page = nullptr;
    script.Do([&] {
      PropSheet_SetCurSel(sheet, nullptr, 1);
      page = PropSheet_GetCurrentPageHwnd(sheet);
      const HWND list = ::GetDlgItem(page, IDC_PROPERTIES);
      EXPECT_EQ(CellOf(list, 0, 0), L"Network adapter");
      EXPECT_EQ(CellOf(list, 0, 1), L"Simulated card 2");
      EXPECT_EQ(CellOf(list, 1, 0), L"MAC address");
      EXPECT_EQ(CellOf(list, 1, 1), L"02-00-5E-10-00-02");
      ::SetFocus(list);
    });
    script.Key(Qt::Key_F1);
    script.Do([page] {
      HELPINFO request{sizeof(request), HELPINFO_WINDOW, 0, nullptr, 0, {}};
      ::SendMessageW(page, WM_HELP, 0, reinterpret_cast<LPARAM>(&request));
    });
  });
  const auto number = HelpPopupNumber(IDD_CONNECTION_DETAILS, IDC_PROPERTIES);
  EXPECT_THAT(
      RecordedHelp::TakeLog(),
      ElementsAre(L"begin", L"popup " + std::to_wstring(number) + L" in quillgate.chm::/popups.txt",
                  L"topic quillgate.chm::/html/conn-details.html"));
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
  logon_.LogOn({});
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
