// Property sheets: what their pages are told, and what the buttons and keys do.
#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <prsht.h>

#include <QApplication>
#include <QPushButton>
#include <QTabBar>
#include <QTest>

#include "desktop/dialog_driver.h"
#include "platform/dialog/recorded_sheet.h"
#include "platform/kernel/locale_source.h"

namespace {

using ::testing::ElementsAre;

constexpr int kApply = 0x3021;
constexpr int kTabs = 0x3020;

TEST(PropertySheet, TheFirstPageIsMadeShownAndActivated) {
  RecordedSheet sheet;
  sheet.AddPage("a");
  sheet.AddPage("b");
  const DesktopScript script([&](DesktopScript& user) {
    user.AwaitWindow("Sheet");
    user.Key(Qt::Key_Escape);
  });
  EXPECT_EQ(sheet.Run(), 0);
  EXPECT_THAT(sheet.Told(), ElementsAre("a: init", "a: set active", "a: query cancel", "a: reset"));
}

TEST(PropertySheet, QuittingEndsItAsAFailureAndIsPassedOn) {
  RecordedSheet sheet;
  sheet.AddPage("a");
  sheet.OnInit([](HWND) { ::PostQuitMessage(6); });
  EXPECT_EQ(sheet.Run(), -1);
  MSG message{};
  EXPECT_FALSE(::GetMessageW(&message, nullptr, 0, 0));
}

TEST(PropertySheet, PagesMadeAtOnceAreMadeInOrder) {
  RecordedSheet sheet;
  sheet.AddPage("a", PSP_PREMATURE);
  sheet.AddPage("b", PSP_PREMATURE);
  sheet.CloseWhenShown(IDCANCEL);
  EXPECT_EQ(sheet.Run(), 0);
  EXPECT_THAT(sheet.Told(), ElementsAre("a: init", "b: init", "a: set active", "a: query cancel",
                                        "a: reset", "b: reset"));
}

TEST(PropertySheet, APageGetsItsOwnRecordWithItsParameter) {
  RecordedSheet sheet;
  sheet.AddPage("a");
  sheet.CloseWhenShown(IDCANCEL);
  sheet.Run();
  EXPECT_TRUE(sheet.GaveTheRecord());
}

TEST(PropertySheet, OkAppliesEveryPageThatWasMade) {
  RecordedSheet sheet;
  sheet.AddPage("a");
  sheet.AddPage("b");
  sheet.AddPage("c");
  const DesktopScript script([&](DesktopScript& user) {
    QWidget* window = user.AwaitWindow("Sheet");
    user.Key(Qt::Key_Tab, Qt::ControlModifier);
    user.Await([&] { return sheet.Shown() == "b"; }, "page b");
    user.Click(window, IDOK);
  });
  EXPECT_GT(sheet.Run(), 0);
  EXPECT_THAT(sheet.Told(),
              ElementsAre("a: init", "a: set active", "a: kill active", "b: init", "b: set active",
                          "b: kill active", "a: apply, closing", "b: apply, closing"));
}

TEST(PropertySheet, APageThatRefusesKeepsTheSheetOpen) {
  RecordedSheet sheet;
  sheet.AddPage("a");
  sheet.Answer(PSN_APPLY, PSNRET_INVALID_NOCHANGEPAGE);
  const DesktopScript script([&](DesktopScript& user) {
    QWidget* window = user.AwaitWindow("Sheet");
    user.Click(window, IDOK);
    user.Await([&] { return sheet.Told().back() == "a: apply, closing"; }, "refusal");
    user.Do([&] { sheet.Answer(PSN_APPLY, PSNRET_NOERROR); });
    user.Click(window, IDOK);
  });
  EXPECT_GT(sheet.Run(), 0);
}

TEST(PropertySheet, AnInvalidPageComesToTheFront) {
  RecordedSheet sheet;
  sheet.AddPage("a", PSP_PREMATURE);
  sheet.AddPage("b", PSP_PREMATURE);
  sheet.Answer(PSN_APPLY, PSNRET_INVALID, "b");
  const DesktopScript script([&](DesktopScript& user) {
    QWidget* window = user.AwaitWindow("Sheet");
    user.Click(window, IDOK);
    user.Await([&] { return sheet.Shown() == "b"; }, "page b");
    user.Click(window, IDCANCEL);
  });
  EXPECT_EQ(sheet.Run(), 0);
}

TEST(PropertySheet, APageThatDoesNotLetGoKeepsItsTab) {
  RecordedSheet sheet;
  sheet.AddPage("a");
  sheet.AddPage("b");
  sheet.Answer(PSN_KILLACTIVE, TRUE);
  const DesktopScript script([&](DesktopScript& user) {
    QWidget* window = user.AwaitWindow("Sheet");
    auto* tabs = window->findChild<QTabBar*>();
    user.Do([&] { QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(1).center()); });
    user.Await([&] { return sheet.Told().back() == "a: kill active"; }, "refusal");
    user.Await([&] { return tabs->currentIndex() == 0; }, "tab of page a");
    user.Do([&] { sheet.Answer(PSN_KILLACTIVE, FALSE); });
    user.Do([&] { QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(1).center()); });
    user.Await([&] { return sheet.Shown() == "b" && tabs->currentIndex() == 1; }, "page b");
    user.Click(window, IDCANCEL);
  });
  sheet.Run();
}

TEST(PropertySheet, APageMayRefuseToBeCancelled) {
  RecordedSheet sheet;
  sheet.AddPage("a");
  sheet.Answer(PSN_QUERYCANCEL, TRUE);
  const DesktopScript script([&](DesktopScript& user) {
    QWidget* window = user.AwaitWindow("Sheet");
    user.Click(window, IDCANCEL);
    user.Await([&] { return sheet.Told().back() == "a: query cancel"; }, "refusal");
    user.Do([&] { sheet.Answer(PSN_QUERYCANCEL, FALSE); });
    user.Do([&] { window->close(); });
  });
  EXPECT_EQ(sheet.Run(), 0);
  EXPECT_EQ(sheet.Told().back(), "a: reset by close box");
}

TEST(PropertySheet, ApplyIsEnabledAsLongAsAPageIsChanged) {
  RecordedSheet sheet;
  sheet.AddPage("a", PSP_PREMATURE);
  sheet.AddPage("b", PSP_PREMATURE);
  std::vector<bool> enabled;
  const DesktopScript script([&](DesktopScript& user) {
    QWidget* window = user.AwaitWindow("Sheet");
    QWidget* apply = user.Child(window, kApply);
    const HWND handle = user.HandleOf(window);
    const auto look = [&] { user.Do([&] { enabled.push_back(apply->isEnabled()); }); };
    look();
    user.Do([&] { PropSheet_Changed(handle, sheet.PageWindow("a")); });
    look();
    user.Do([&] { PropSheet_Changed(handle, sheet.PageWindow("b")); });
    user.Do([&] { PropSheet_UnChanged(handle, sheet.PageWindow("a")); });
    look();
    user.Click(apply);
    user.Await([&] { return !apply->isEnabled(); }, "end of applying");
    look();
    user.Click(window, IDCANCEL);
  });
  EXPECT_GT(sheet.Run(), 0) << "what was applied is saved, whatever follows";
  EXPECT_THAT(enabled, ElementsAre(false, true, true, false));
}

TEST(PropertySheet, HiddenButtonsLeaveNoGapAtTheRight) {
  RecordedSheet sheet(PSH_NOAPPLYNOW);
  sheet.AddPage("a");
  sheet.OnInit([](HWND page) {
    const HWND window = ::GetParent(page);
    ::ShowWindow(::GetDlgItem(window, IDOK), SW_HIDE);
    ::SetDlgItemTextW(window, IDCANCEL, L"Close");
  });
  QString caption;
  int gap = -1;
  bool others = true;
  const DesktopScript script([&](DesktopScript& user) {
    QWidget* window = user.AwaitWindow("Sheet");
    QWidget* close = user.Child(window, IDCANCEL);
    caption = user.TextOf(close);
    user.Do([&] {
      const QWidget* tabs = window->findChild<QWidget*>(QString::number(kTabs));
      gap = tabs->geometry().right() - close->geometry().right();
      others = window->findChild<QWidget*>(QString::number(IDOK))->isVisible() ||
               window->findChild<QWidget*>(QString::number(kApply))->isVisible();
    });
    user.Click(close);
  });
  EXPECT_EQ(sheet.Run(), 0);
  EXPECT_EQ(caption, "Close");
  EXPECT_EQ(gap, 0);
  EXPECT_FALSE(others);
}

TEST(PropertySheet, TheLargestPageFitsBetweenTabsAndButtons) {
  RecordedSheet sheet;
  sheet.AddPage("a", PSP_PREMATURE, {0, 0, 100, 60});
  sheet.AddPage("b", PSP_PREMATURE, {0, 0, 180, 140});
  QRect page;
  QRect ok;
  QRect tabs;
  const DesktopScript script([&](DesktopScript& user) {
    QWidget* window = user.AwaitWindow("Sheet");
    user.Do([&] {
      for (QWidget* child : window->findChildren<QWidget*>()) {
        const auto handle = child->property("windowHandle").toULongLong();
        if (handle == reinterpret_cast<UINT_PTR>(sheet.PageWindow("b"))) page = child->geometry();
      }
      ok = window->findChild<QWidget*>(QString::number(IDOK))->geometry();
      tabs = window->findChild<QWidget*>(QString::number(kTabs))->geometry();
    });
    user.Click(window, IDCANCEL);
  });
  sheet.Run();
  EXPECT_TRUE(tabs.contains(page));
  EXPECT_GT(ok.top(), tabs.bottom());
  EXPECT_FALSE(page.isEmpty());
}

TEST(PropertySheet, KeysTurnThePages) {
  RecordedSheet sheet;
  sheet.AddPage("a");
  sheet.AddPage("b");
  sheet.AddPage("c");
  const DesktopScript script([&](DesktopScript& user) {
    user.AwaitWindow("Sheet");
    const auto press = [&](Qt::Key key, Qt::KeyboardModifiers modifiers, const char* page) {
      user.Key(key, modifiers);
      user.Await([&] { return sheet.Shown() == page; }, QString("page %1").arg(page));
    };
    press(Qt::Key_Tab, Qt::ControlModifier, "b");
    press(Qt::Key_PageDown, Qt::ControlModifier, "c");
    press(Qt::Key_Tab, Qt::ControlModifier, "a");
    press(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier, "c");
    press(Qt::Key_PageUp, Qt::ControlModifier, "b");
    user.Key(Qt::Key_Escape);
  });
  sheet.Run();
}

TEST(PropertySheet, APageMayCloseTheSheetFromItsTimer) {
  RecordedSheet sheet;
  sheet.AddPage("a");
  sheet.OnInit([](HWND page) { ::SetTimer(page, 1, 10, nullptr); });
  sheet.OnTimer([](HWND page) {
    ::KillTimer(page, 1);
    PropSheet_PressButton(::GetParent(page), PSBTN_CANCEL);
  });
  EXPECT_EQ(sheet.Run(), 0);
  sheet.OnTimer([](HWND page) { ::DestroyWindow(::GetParent(page)); });
  EXPECT_EQ(sheet.Run(), 0);
}

TEST(PropertySheet, WithoutPagesOrWithUnknownFlagsItFails) {
  RecordedSheet none;
  EXPECT_EQ(none.Run(), -1);
  // An old wizard, a picture without a wizard, and one without room for its name.
  for (const DWORD flags : {DWORD{0x20}, PSH_WATERMARK, PSH_WIZARD97 | PSH_HEADER}) {
    RecordedSheet sheet(flags);
    sheet.AddPage("a");
    EXPECT_EQ(sheet.Run(), -1);
    EXPECT_EQ(::GetLastError(), ERROR_INVALID_PARAMETER);
  }
}

TEST(PropertySheet, ASheetOwnsItsPages) {
  RecordedSheet sheet;
  sheet.AddPage("a");
  sheet.CloseWhenShown(IDCANCEL);
  const std::vector<HPROPSHEETPAGE> pages = sheet.MakePages();
  sheet.RunWith(pages);
  EXPECT_FALSE(::DestroyPropertySheetPage(pages[0]));
}

TEST(PropertySheet, ButtonsSpeakTheUsersLanguage) {
  platform::SetLocaleChoice(platform::LocaleChoice{MAKELANGID(LANG_SWEDISH, SUBLANG_DEFAULT), 0});
  RecordedSheet sheet;
  sheet.AddPage("a");
  QStringList captions;
  const DesktopScript script([&](DesktopScript& user) {
    QWidget* window = user.AwaitWindow("Sheet");
    for (const int id : {IDOK, IDCANCEL, kApply})
      captions << user.TextOf(user.Child(window, id));
    user.Key(Qt::Key_Escape);
  });
  sheet.Run();
  platform::SetLocaleChoice(std::nullopt);
  EXPECT_EQ(captions, QStringList({"OK", "Avbryt", "&Verkställ"}));
}

}  // namespace
