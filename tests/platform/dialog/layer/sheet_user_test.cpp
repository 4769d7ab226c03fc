// The user at property sheets and wizards, what they look like, and which are refused.
#include <windows.h>

#include <gtest/gtest.h>
#include <prsht.h>

#include <QApplication>
#include <QTabBar>
#include <QTest>
#include <array>

#include "desktop/dialog_driver.h"
#include "platform/dialog/recorded_sheet.h"
#include "platform/kernel/locale_source.h"
#include "platform/kernel/resources.h"

namespace {

constexpr int kTabs = 0x3020;
constexpr int kBack = 0x3023;
constexpr int kNext = 0x3024;

class SheetUser : public ::testing::Test {
 protected:
  explicit SheetUser(DWORD flags = PSH_DEFAULT) : sheet_(flags) {}

  void AwaitPage(DesktopScript& user, const char* page) {
    user.Await([&] { return sheet_.Shown() == page; }, QString("page %1").arg(page));
  }
  void Press(DesktopScript& user, Qt::Key key, Qt::KeyboardModifiers modifiers, const char* page) {
    user.Key(key, modifiers);
    AwaitPage(user, page);
  }

  RecordedSheet sheet_;
};

TEST_F(SheetUser, KeysTurnThePages) {
  for (const char* page : {"a", "b", "c"})
    sheet_.AddPage(page);
  const DesktopScript script([&](DesktopScript& user) {
    QWidget* window = user.AwaitWindow("Sheet");
    Press(user, Qt::Key_Tab, Qt::ControlModifier, "b");
    Press(user, Qt::Key_PageDown, Qt::ControlModifier, "c");
    Press(user, Qt::Key_Tab, Qt::ControlModifier, "a");
    Press(user, Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier, "c");
    Press(user, Qt::Key_PageUp, Qt::ControlModifier, "b");
    user.Click(window, IDOK);
  });
  EXPECT_GT(sheet_.Run(), 0);
}

TEST_F(SheetUser, APageThatDoesNotLetGoKeepsItsTab) {
  sheet_.AddPage("a");
  sheet_.AddPage("b");
  sheet_.Answer(PSN_KILLACTIVE, TRUE);
  const DesktopScript script([&](DesktopScript& user) {
    QWidget* window = user.AwaitWindow("Sheet");
    auto* tabs = window->findChild<QTabBar*>();
    const auto click = [&] {
      user.Do([&] { QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(1).center()); });
    };
    click();
    user.Await([&] { return sheet_.Notified().back() == "a: kill active"; }, "refusal");
    user.Await([&] { return tabs->currentIndex() == 0; }, "tab of page a");
    user.Do([&] { sheet_.Answer(PSN_KILLACTIVE, FALSE); });
    click();
    user.Await([&] { return sheet_.Shown() == "b" && tabs->currentIndex() == 1; }, "page b");
    user.Key(Qt::Key_Escape);
  });
  EXPECT_EQ(sheet_.Run(), 0);
}

TEST_F(SheetUser, ButtonsSpeakTheUsersLanguage) {
  platform::SetLocaleChoice(platform::LocaleChoice{MAKELANGID(LANG_SWEDISH, SUBLANG_DEFAULT), 0});
  sheet_.AddPage("a");
  const DesktopScript script([&](DesktopScript& user) {
    QWidget* window = user.AwaitWindow("Sheet");
    for (const auto& [id, caption] :
         {std::pair{IDOK, "OK"}, {IDCANCEL, "Avbryt"}, {kApply, "&Verkställ"}})
      EXPECT_EQ(user.TextOf(user.Child(window, id)), caption);
    user.Key(Qt::Key_Escape);
  });
  sheet_.Run();
  platform::SetLocaleChoice(std::nullopt);
}

TEST(SheetCall, HiddenButtonsLeaveNoGapAtTheRight) {
  RecordedSheet sheet(PSH_NOAPPLYNOW);
  sheet.AddPage("a");
  sheet.OnInit([](HWND page) { ::ShowWindow(::GetDlgItem(::GetParent(page), IDOK), SW_HIDE); });
  sheet.Run({[](HWND window) {
    EXPECT_EQ(PlaceOf(::GetDlgItem(window, IDCANCEL)).right,
              PlaceOf(::GetDlgItem(window, kTabs)).right);
    EXPECT_FALSE(::IsWindowVisible(::GetDlgItem(window, IDOK)));
    EXPECT_FALSE(::IsWindowVisible(::GetDlgItem(window, kApply)));
  }});
}

TEST(SheetCall, WithoutPagesOrWithUnknownFlagsItFails) {
  EXPECT_EQ(RecordedSheet().Run(), -1);
  // An old wizard, a picture without a wizard, and one without room for its name.
  for (const DWORD flags : {DWORD{0x20}, PSH_WATERMARK, PSH_WIZARD97 | PSH_HEADER}) {
    RecordedSheet sheet(flags);
    sheet.AddPage("a");
    EXPECT_EQ(sheet.Run(), -1);
    EXPECT_EQ(::GetLastError(), ERROR_INVALID_PARAMETER);
  }
}

// Outer pages "a" and "d", which have no controls, and inner pages "b" and "c".
class WizardUser : public SheetUser {
 protected:
  WizardUser() : SheetUser(PSH_WIZARD97) {
    for (const char* page : {"a", "b", "c", "d"}) {
      const bool isOuter = *page == 'a' || *page == 'd';
      sheet_.AddPage(page, isOuter ? PSP_HIDEHEADER : PSP_USEHEADERTITLE,
                     {0, 0, 317, isOuter ? 0 : 143});
    }
  }
};

TEST_F(WizardUser, EnterGoesForwardAndFinishesAltGoesBack) {
  const DesktopScript script([&](DesktopScript& user) {
    QWidget* window = user.AwaitWindow("Title");
    const QWidget* back = user.Child(window, kBack);
    user.Await([&] { return !back->isEnabled(); }, "first page");
    Press(user, Qt::Key_Return, Qt::NoModifier, "b");
    Press(user, Qt::Key_N, Qt::AltModifier, "c");
    Press(user, Qt::Key_B, Qt::AltModifier, "b");
    user.Click(window, kNext);
    AwaitPage(user, "c");
    Press(user, Qt::Key_Return, Qt::NoModifier, "d");
    user.Key(Qt::Key_Return);
  });
  EXPECT_GT(sheet_.Run(), 0);
}

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

TEST_F(WizardUser, PartsStandInTheirPlacesWithTheirPictures) {
  RegisterPicture();
  sheet_.ShowPictures(kPicture);
  QImage outer;
  QImage inner;
  const DesktopScript script([&](DesktopScript& user) {
    QWidget* window = user.AwaitWindow("Title");
    user.Do([&] { outer = window->grab().toImage(); });
    user.Click(window, kNext);
    AwaitPage(user, "b");
    user.Do([&] {
      inner = window->grab().toImage();
      const HWND page = sheet_.PageWindow("a");
      const auto button = [&](int id) { return PlaceOf(::GetDlgItem(::GetParent(page), id)); };
      const RECT place = PlaceOf(page);
      EXPECT_EQ(place.right - place.left, outer.width());
      EXPECT_GT(PlaceOf(sheet_.PageWindow("b")).top - place.top, 49) << "room for the header";
      EXPECT_GT(button(kBack).top, place.bottom);
      EXPECT_EQ(button(kBack).right, button(kNext).left);
      EXPECT_GT(button(IDCANCEL).left, button(kNext).right);
      EXPECT_EQ(outer.pixel(163, static_cast<int>(place.bottom - place.top) - 1), kColour);
    });
    user.Key(Qt::Key_Escape);
  });
  sheet_.Run();
  const QRgb window = QApplication::palette().color(QPalette::Base).rgb();
  EXPECT_EQ(outer.pixel(164, 5), window);
  EXPECT_EQ(inner.pixel(3, 3), window);
  EXPECT_EQ(inner.pixel(inner.width() - 20, 30), kColour);
}

}  // namespace
