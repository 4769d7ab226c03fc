// Wizards: what their pages are asked on the way, which button is pressed by Enter, and where the
// parts stand.
#include <windows.h>

#include <gtest/gtest.h>
#include <prsht.h>

#include <QApplication>
#include <array>
#include <cstring>

#include "desktop/dialog_driver.h"
#include "platform/dialog/recorded_sheet.h"
#include "platform/kernel/resources.h"

namespace {

constexpr int kBack = 0x3023;
constexpr int kNext = 0x3024;
constexpr int kFinish = 0x3025;
constexpr std::array<std::pair<const char*, int>, 3> kButtons = {
    {{"back", kBack}, {"next", kNext}, {"cancel", IDCANCEL}}};

constexpr WORD kPicture = 4711;
constexpr QRgb kColour = 0xFF2A2A2A;

// A bitmap of 49 pixels square in one colour.
void RegisterPicture() {
  static auto& bytes = *new std::vector<std::byte>(40 + 49 * 49 * 4, std::byte{0x2A});
  // BITMAPINFOHEADER: size, width, height, planes and bits, and nothing else.
  constexpr std::array<DWORD, 10> kHeader = {40, 49, 49, 1 | (32 << 16)};
  std::memcpy(bytes.data(), kHeader.data(), sizeof kHeader);
  const platform::Resource resource = {2, kPicture, 0, bytes};
  platform::RegisterResources({&resource, 1});
}

// Outer pages "a" and "d", which have no controls, and inner pages "b" and "c".
class Wizard : public ::testing::Test {
 protected:
  Wizard() {
    for (const char* page : {"a", "b", "c", "d"}) {
      const bool isOuter = *page == 'a' || *page == 'd';
      sheet_.AddPage(page, isOuter ? PSP_HIDEHEADER : PSP_USEHEADERTITLE,
                     {0, 0, 317, isOuter ? 0 : 143});
    }
    sheet_.SetWizardButtons("a", PSWIZB_NEXT);
    sheet_.SetWizardButtons("b", PSWIZB_BACK | PSWIZB_NEXT);
    sheet_.SetWizardButtons("d", PSWIZB_BACK | PSWIZB_FINISH);
  }

  // Presses buttons one by one, each when the page before it has been activated.
  INT_PTR Press(const std::vector<int>& buttons) {
    const DesktopScript script([&](DesktopScript& user) {
      QWidget* window = user.AwaitWindow("Title");
      for (const int id : buttons) {
        const auto told = sheet_.Told().size();
        QWidget* button = user.Child(window, id);
        user.Await([&] { return button->isVisible() && button->isEnabled(); }, "button");
        user.Click(button);
        user.Await([&] { return sheet_.Told().size() > told; }, "notification");
      }
      if (buttons.back() != kFinish) user.Key(Qt::Key_Escape);
    });
    return sheet_.Run();
  }

  RecordedSheet sheet_{PSH_WIZARD97};
};

TEST_F(Wizard, PagesLetGoAreAskedForTheWayAndAreMadeOnce) {
  EXPECT_EQ(Press({kNext, kNext, kBack, kNext}), 0);
  const std::vector<std::string> expected = {
      "a: init",        "a: set active",   "a: kill active", "a: next",        "b: init",
      "b: set active",  "b: kill active",  "b: next",        "c: init",        "c: set active",
      "c: kill active", "c: back",         "b: set active",  "b: kill active", "b: next",
      "c: set active",  "c: query cancel", "a: reset",       "b: reset",       "c: reset"};
  EXPECT_EQ(sheet_.Told(), expected);
}

TEST_F(Wizard, FinishEndsItUnlessThePageKeepsIt) {
  sheet_.Answer(PSN_WIZNEXT, sheet_.TemplateOf(3), "a");
  EXPECT_GT(Press({kNext, kFinish}), 0);
  EXPECT_EQ(sheet_.Told().back(), "d: finish");
  sheet_.Answer(PSN_WIZFINISH, TRUE);
  sheet_.Answer(PSN_SETACTIVE, -1, "c");
  EXPECT_EQ(Press({kNext, kFinish, kBack}), 0);
  EXPECT_EQ(sheet_.Shown(), "b") << "a page that is skipped is skipped on the way back too";
}

TEST_F(Wizard, AnswersChooseThePage) {
  using Case = std::tuple<UINT, LRESULT, const char*, const char*>;
  for (const auto& [code, answer, page, shown] :
       {Case{PSN_WIZNEXT, -1, "a", "a"}, Case{PSN_WIZNEXT, sheet_.TemplateOf(2), "a", "c"},
        Case{PSN_WIZNEXT, 9999, "a", "a"}, Case{PSN_KILLACTIVE, TRUE, "a", "a"},
        Case{PSN_SETACTIVE, -1, "b", "c"}, Case{PSN_SETACTIVE, sheet_.TemplateOf(3), "b", "d"}}) {
    sheet_.Answer(code, answer, page);
    Press({kNext});
    EXPECT_EQ(sheet_.Shown(), shown) << code << " " << answer;
    sheet_.Answer(code, 0, page);
  }
}

TEST_F(Wizard, EnterGoesForwardAndFinishesAltGoesBack) {
  const DesktopScript script([&](DesktopScript& user) {
    user.AwaitWindow("Title");
    const auto press = [&](Qt::Key key, Qt::KeyboardModifiers modifiers, const char* page) {
      user.Key(key, modifiers);
      user.Await([&] { return sheet_.Shown() == page; }, QString("page %1").arg(page));
    };
    press(Qt::Key_Return, Qt::NoModifier, "b");
    press(Qt::Key_N, Qt::AltModifier, "c");
    press(Qt::Key_B, Qt::AltModifier, "b");
    press(Qt::Key_Return, Qt::NoModifier, "c");
    press(Qt::Key_Return, Qt::NoModifier, "d");
    user.Key(Qt::Key_Return);
  });
  EXPECT_GT(sheet_.Run(), 0);
}

TEST_F(Wizard, PartsStandInTheirPlacesWithTheirPictures) {
  RegisterPicture();
  sheet_.ShowPictures(kPicture);
  std::map<std::string, RECT> places;
  QImage outer;
  QImage inner;
  const DesktopScript script([&](DesktopScript& user) {
    QWidget* window = user.AwaitWindow("Title");
    user.Do([&] { outer = window->grab().toImage(); });
    user.Click(window, kNext);
    user.Await([&] { return sheet_.Shown() == "b"; }, "page b");
    user.Do([&] {
      inner = window->grab().toImage();
      for (const char* page : {"a", "b"})
        ::GetWindowRect(sheet_.PageWindow(page), &places[page]);
      for (const auto& [name, id] : kButtons)
        ::GetWindowRect(::GetDlgItem(::GetParent(sheet_.PageWindow("a")), id), &places[name]);
    });
    user.Key(Qt::Key_Escape);
  });
  sheet_.Run();
  EXPECT_EQ(places["a"].right - places["a"].left, outer.width());
  EXPECT_GT(places["b"].top - places["a"].top, 49) << "room for the header";
  EXPECT_GT(places["back"].top, places["a"].bottom);
  EXPECT_EQ(places["back"].right, places["next"].left);
  EXPECT_GT(places["cancel"].left, places["next"].right);
  const QRgb window = QApplication::palette().color(QPalette::Base).rgb();
  EXPECT_EQ(outer.pixel(163, static_cast<int>(places["a"].bottom - places["a"].top) - 1), kColour);
  EXPECT_EQ(outer.pixel(164, 5), window);
  EXPECT_EQ(inner.pixel(3, 3), window);
  EXPECT_EQ(inner.pixel(inner.width() - 20, 30), kColour);
}

}  // namespace
