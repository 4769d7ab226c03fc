// Dialog objects and pages behind a sheet that a user applies, closes or asks for help.
#include "frame/property_sheet.h"

#include <QScreen>
#include <QTabBar>
#include <stdexcept>

#include "frame/desktop/frame_test.h"
#include "program/recorded_help.h"

namespace quillgate {
namespace {

using testing::ElementsAre;

constexpr UINT kThrow = WM_APP;
constexpr UINT kAsk = WM_APP + 1;
constexpr int kNumber = 2000;

class RecordingPage final : public PropertyPage {
 public:
  RecordingPage(const UiSurroundings& ui, UINT templateNumber, MessageId title)
      : PropertyPage(ui, templateNumber, title, L"html/page.html") {}

  bool OnApply(HWND) override {
    log.push_back("apply");
    if (throwInApply) throw std::runtime_error("apply");
    number = ReadNumber(kNumber, {1, highest}).value_or(0);
    return number != 0;
  }
  void OnCancel(HWND window) override {
    EXPECT_EQ(window, Window());
    log.push_back("cancel");
  }

  std::vector<std::string> log;
  std::uint32_t number = 0;
  bool closes = true;
  std::uint32_t highest = 2000;
  bool throwInApply = false;

 private:
  bool OnInitDialog(HWND window) override {
    EXPECT_EQ(window, Window());
    log.push_back("init");
    ::CreateWindowExW(0, L"EDIT", L"1441", WS_CHILD | WS_VISIBLE, 10, 10, 80, 24, window,
                      reinterpret_cast<HMENU>(INT_PTR{kNumber}), nullptr, nullptr);
    return true;
  }
  void SetTexts(HWND) override { log.push_back("texts"); }
  INT_PTR DialogProc(HWND, UINT message, WPARAM, LPARAM) override {
    if (message == kThrow) throw DBerror(L"disk full", 13);
    if (message != kAsk) return FALSE;
    log.push_back(Ask(kMsgInvalidUserName) ? "yes" : "no");
    return TRUE;
  }
  bool OnQueryCancel() override { return closes; }
};

class PropertySheetTest : public FrameTest {
 protected:
  // The sheet of both pages, while the script plays the user, who presses OK or Cancel in the end.
  bool Run(int last, const Act& user,
           PropertySheet::Apply apply = PropertySheet::Apply::kWithButton) {
    PropertySheet sheet(catalogue_, kMsgConnectionInformation, apply);
    sheet.Add(first_);
    sheet.Add(second_);
    DesktopScript script(UserOf("Connection information", last, user));
    return sheet.Run();
  }

  RecordingPage first_{ui_, IDD_CONNECTION_GENERAL, kMsgGeneral};
  RecordingPage second_{ui_, IDD_CONNECTION_DETAILS, kMsgDetails};
};

TEST_F(PropertySheetTest, ASheetWithoutPagesIsNotShown) {
  EXPECT_FALSE(PropertySheet(catalogue_, kMsgGeneral, PropertySheet::Apply::kWithButton).Run());
}

TEST_F(PropertySheetTest, BothPagesAreMadeAtOnceFollowTheLanguageAndAreForgottenAfterwards) {
  EXPECT_TRUE(Run(IDOK, [&](DesktopScript& script, QWidget* sheet) {
    EXPECT_NE(first_.Window(), nullptr);
    EXPECT_NE(second_.Window(), nullptr);
    script.Do([&] {
      const QPoint middle = sheet->screen()->availableGeometry().center();
      EXPECT_LE((sheet->geometry().center() - middle).manhattanLength(), 2);

      catalogue_.SetInterfaceLanguage(1053);
      DialogObject::RefreshAllTexts();
      EXPECT_EQ(sheet->windowTitle(), "Anslutningsinformation");
      const auto* tabs = sheet->findChild<QTabBar*>();
      EXPECT_EQ(tabs->tabText(0), QString::fromWCharArray(L"Allm\u00e4nt"));
      EXPECT_EQ(tabs->tabText(1), "Detaljer");
    });
  }));
  EXPECT_EQ(first_.Window(), nullptr);
  EXPECT_EQ(second_.Window(), nullptr);
  EXPECT_THAT(first_.log, ElementsAre("init", "texts", "texts", "apply"));
  EXPECT_THAT(second_.log, ElementsAre("init", "texts", "texts", "apply"));
}

TEST_F(PropertySheetTest, AValueOutOfRangeIsNotifiedWithItsFieldSelectedAndFocused) {
  first_.highest = 1440;
  Run(IDOK, [&](DesktopScript& script, QWidget* sheet) {
    script.Click(sheet, IDOK);
    EXPECT_EQ(CloseBox(script), "The value 1441 is invalid. It must be in the range 1 - 1440.");
    auto* field = qobject_cast<QLineEdit*>(script.Child(sheet, kNumber));
    script.Await([&] { return field->hasFocus(); }, "focus in the field");
    script.Do([&] { EXPECT_EQ(field->selectedText(), "1441"); });
    script.Type(field, "1440");
  });
  EXPECT_EQ(first_.number, 1440u);
  EXPECT_THAT(first_.log, ElementsAre("init", "texts", "apply", "apply"));
}

TEST_F(PropertySheetTest, CancelReachesEveryPageUnlessTheShownOneRefuses) {
  first_.closes = false;
  const auto user = [&](DesktopScript& script, QWidget* sheet) {
    const QWidget* apply = script.Child(sheet, kApply);
    script.Click(sheet, IDCANCEL);
    script.Do([&] {
      EXPECT_FALSE(apply->isVisible());
      EXPECT_TRUE(sheet->isVisible());
      EXPECT_THAT(first_.log, ElementsAre("init", "texts"));
      first_.closes = true;
    });
  };
  Run(IDCANCEL, user, PropertySheet::Apply::kWithoutButton);
  EXPECT_THAT(first_.log, ElementsAre("init", "texts", "cancel"));
  EXPECT_THAT(second_.log, ElementsAre("init", "texts", "cancel"));
}

TEST_F(PropertySheetTest, ExceptionsAreShownOneAtATimeAndKeepTheSheetOpen) {
  first_.throwInApply = true;
  Run(IDCANCEL, [&](DesktopScript& script, QWidget* sheet) {
    script.Click(sheet, IDOK);
    EXPECT_EQ(CloseBox(script), "An unknown error has occurred. Please notify the author.");
    script.Do([&] {
      EXPECT_TRUE(sheet->isVisible());
      ::PostMessageW(first_.Window(), kThrow, 0, 0);
      ::PostMessageW(first_.Window(), kThrow, 0, 0);
    });
    EXPECT_EQ(CloseBox(script), "A database error was detected:\n\ndisk full");
  });
}

TEST_F(PropertySheetTest, OnlyYesIsAYes) {
  Run(IDCANCEL, [&](DesktopScript& script, QWidget*) {
    for (const int button : {IDYES, IDNO}) {
      script.Do([&] { ::PostMessageW(first_.Window(), kAsk, 0, 0); });
      CloseBox(script, button);
    }
  });
  EXPECT_THAT(first_.log, ElementsAre("init", "texts", "yes", "no", "cancel"));
}

TEST_F(PropertySheetTest, HelpIsTheControlsOwnTextElseThePagesTopic) {
  const RecordedHelp viewer;
  help_.SetHelpFile(L"help.chm");
  Run(IDCANCEL, [&](DesktopScript& script, QWidget*) {
    for (const DWORD_PTR context : {DWORD_PTR{0x807C0435}, DWORD_PTR{0}}) {
      HELPINFO info{sizeof(info), HELPINFO_WINDOW, 0, nullptr, context, {}};
      script.Do(
          [&] { ::SendMessageW(first_.Window(), WM_HELP, 0, reinterpret_cast<LPARAM>(&info)); });
    }
  });
  EXPECT_THAT(
      RecordedHelp::TakeLog(),
      ElementsAre(L"begin", L"popup " + std::to_wstring(0x807C0435u) + L" in help.chm::/popups.txt",
                  L"topic help.chm::/html/page.html"));
}

}  // namespace
}  // namespace quillgate
