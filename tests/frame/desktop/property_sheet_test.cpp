// Dialog objects and pages behind a sheet that a user applies, closes or asks for help.
#include "frame/property_sheet.h"

#include <windows.h>
#include <htmlhelp.h>

#include <QScreen>
#include <stdexcept>

#include "frame/desktop/frame_test.h"
#include "platform/kernel/modules.h"

namespace quillgate {
namespace {

using testing::ElementsAre;

constexpr UINT kThrow = WM_APP;

class RecordingPage final : public PropertyPage {
 public:
  RecordingPage(const UiSurroundings& ui, UINT templateNumber, const std::wstring& title)
      : PropertyPage(ui, templateNumber, title, L"html/page.html") {}

  bool OnApply(HWND) override {
    log.push_back("apply");
    if (throwInApply) throw std::runtime_error("apply");
    return accepts;
  }
  void OnCancel(HWND window) override {
    EXPECT_EQ(window, Window());
    log.push_back("cancel");
  }

  std::vector<std::string> log;
  bool accepts = true;
  bool throwInApply = false;

 private:
  bool OnInitDialog(HWND window) override {
    EXPECT_EQ(window, Window());
    log.push_back("init");
    return true;
  }
  void SetTexts(HWND) override { log.push_back("texts"); }
  INT_PTR DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override {
    if (message == kThrow) throw DBerror(L"disk full", 13);
    return PropertyPage::DialogProc(window, message, wParam, lParam);
  }
};

class PropertySheetTest : public FrameTest {
 protected:
  // The sheet of both pages, while the script plays the user.
  bool Run(PropertySheet::Apply apply, const std::function<void(DesktopScript&, QWidget*)>& user) {
    PropertySheet sheet(apply);
    sheet.Add(first_);
    sheet.Add(second_);
    DesktopScript script([&](DesktopScript& steps) { user(steps, steps.AwaitWindow("Sheet")); });
    return sheet.Run(L"Sheet");
  }

  static QPushButton* Button(DesktopScript& script, QWidget* sheet, const QString& text) {
    QPushButton* found = nullptr;
    script.Do([&] {
      for (QPushButton* each : sheet->findChildren<QPushButton*>()) {
        if (each->text().remove('&') == text && each->isVisible()) found = each;
      }
    });
    return found;
  }

  RecordingPage first_{ui_, IDD_CONNECTION_GENERAL, L"First"};
  RecordingPage second_{ui_, IDD_CONNECTION_DETAILS, L"Second"};
};

TEST_F(PropertySheetTest, ASheetWithoutPagesIsNotShown) {
  EXPECT_FALSE(PropertySheet(PropertySheet::Apply::kWithButton).Run(L"Sheet"));
}

TEST_F(PropertySheetTest, BothPagesAreMadeAtOnceAndForgottenAfterwards) {
  EXPECT_TRUE(Run(PropertySheet::Apply::kWithButton, [&](DesktopScript& script, QWidget* sheet) {
    EXPECT_NE(first_.Window(), nullptr);
    EXPECT_NE(second_.Window(), nullptr);
    script.Do([&] {
      const QPoint middle = sheet->screen()->availableGeometry().center();
      EXPECT_LE((sheet->geometry().center() - middle).manhattanLength(), 2);
    });
    script.Click(Button(script, sheet, "OK"));
  }));
  EXPECT_EQ(first_.Window(), nullptr);
  EXPECT_EQ(second_.Window(), nullptr);
  EXPECT_THAT(first_.log, ElementsAre("init", "texts", "apply"));
  EXPECT_THAT(second_.log, ElementsAre("init", "texts", "apply"));
}

TEST_F(PropertySheetTest, APageThatRefusesKeepsTheSheetOpenOnItself) {
  first_.accepts = false;
  Run(PropertySheet::Apply::kWithButton, [&](DesktopScript& script, QWidget* sheet) {
    script.Click(Button(script, sheet, "OK"));
    script.Await([&] { return first_.log.back() == "apply"; }, "refused apply");
    script.Do([&] { EXPECT_TRUE(sheet->isVisible()); });
    script.Do([&] { first_.accepts = true; });
    script.Click(Button(script, sheet, "OK"));
  });
  EXPECT_THAT(first_.log, ElementsAre("init", "texts", "apply", "apply"));
}

TEST_F(PropertySheetTest, AFailedApplyIsShownAndCountsAsRefused) {
  first_.throwInApply = true;
  Run(PropertySheet::Apply::kWithButton, [&](DesktopScript& script, QWidget* sheet) {
    script.Click(Button(script, sheet, "OK"));
    EXPECT_EQ(CloseBox(script), "An unknown error has occurred. Please notify the author.");
    script.Do([&] { EXPECT_TRUE(sheet->isVisible()); });
    script.Click(Button(script, sheet, "Cancel"));
  });
}

TEST_F(PropertySheetTest, CancelReachesEveryDialogObject) {
  Run(PropertySheet::Apply::kWithoutButton, [&](DesktopScript& script, QWidget* sheet) {
    EXPECT_EQ(Button(script, sheet, "Apply"), nullptr);
    script.Click(Button(script, sheet, "Cancel"));
  });
  EXPECT_THAT(first_.log, testing::Contains("cancel"));
  EXPECT_THAT(second_.log, testing::Contains("cancel"));
}

TEST_F(PropertySheetTest, TheTextsAreFetchedAgainOnRequest) {
  Run(PropertySheet::Apply::kWithButton, [&](DesktopScript& script, QWidget* sheet) {
    script.Do([&] { ::SendMessageW(second_.Window(), kRefreshTexts, 0, 0); });
    script.Click(Button(script, sheet, "Cancel"));
  });
  EXPECT_THAT(second_.log, ElementsAre("init", "texts", "texts", "cancel"));
}

TEST_F(PropertySheetTest, WhatAMessageThrowsIsShownOnceAtATime) {
  Run(PropertySheet::Apply::kWithButton, [&](DesktopScript& script, QWidget* sheet) {
    script.Do([&] {
      ::PostMessageW(first_.Window(), kThrow, 0, 0);
      ::PostMessageW(first_.Window(), kThrow, 0, 0);
    });
    EXPECT_EQ(CloseBox(script), "A database error was detected:\n\ndisk full");
    script.Click(Button(script, sheet, "Cancel"));
  });
}

// What the help viewer was asked for.
struct HelpRequest {
  std::wstring location;
  UINT command = 0;
  DWORD context = 0;
};
std::vector<HelpRequest> helpRequests;

constexpr UINT kDisplayTopic = 0;
constexpr UINT kTextPopup = 14;

HWND WINAPI RecordHelp(HWND, LPCWSTR file, UINT command, DWORD_PTR data) {
  HelpRequest request{file == nullptr ? L"" : file, command, 0};
  if (command == kTextPopup) request.context = reinterpret_cast<const HH_POPUP*>(data)->idString;
  if (command == kTextPopup || command == kDisplayTopic) helpRequests.push_back(request);
  return nullptr;
}

TEST_F(PropertySheetTest, HelpIsTheControlsOwnTextElseThePagesTopic) {
  helpRequests.clear();
  platform::RegisterBuiltInModule(L"hhctrl.ocx", {{"#15", reinterpret_cast<FARPROC>(RecordHelp)}});
  help_.SetHelpFile(L"help.chm");
  Run(PropertySheet::Apply::kWithButton, [&](DesktopScript& script, QWidget* sheet) {
    for (const DWORD_PTR context : {DWORD_PTR{0x807C0435}, DWORD_PTR{0}}) {
      HELPINFO info{};
      info.cbSize = sizeof(info);
      info.iContextType = HELPINFO_WINDOW;
      info.dwContextId = context;
      script.Do(
          [&] { ::SendMessageW(first_.Window(), WM_HELP, 0, reinterpret_cast<LPARAM>(&info)); });
    }
    script.Click(Button(script, sheet, "Cancel"));
  });
  platform::UnregisterBuiltInModule(L"hhctrl.ocx");
  ASSERT_EQ(helpRequests.size(), 2u);
  EXPECT_EQ(helpRequests[0].location, L"help.chm::/popups.txt");
  EXPECT_EQ(helpRequests[0].context, 0x807C0435u);
  EXPECT_EQ(helpRequests[1].location, L"help.chm::/html/page.html");
}

}  // namespace
}  // namespace quillgate
