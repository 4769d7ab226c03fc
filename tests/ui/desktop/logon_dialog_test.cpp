// The logon dialog in front of a user who clicks and types.
#include "ui/logon_dialog.h"

#include <QComboBox>

#include "frame/desktop/frame_test.h"

namespace quillgate {
namespace {

class KnownUsers final : public LogonCandidates {
 public:
  std::vector<std::wstring> Names() const override { return {L"Anna", L"Bo", L"Cy"}; }
  bool Accepts(std::wstring_view name, std::wstring_view password) const override {
    return password == std::wstring(name) + L"!";
  }
};

class LogonDialogTest : public FrameTest {
 protected:
  // Whether somebody was accepted, while the script plays the user.
  bool Run(int last, const Act& user) {
    LogonDialog dialog({ui_, settings_, gdiPlus_, bannerTimerUsed_, pause_}, system_, users_);
    DesktopScript script(UserOf("Quillgate - Log on", last, user));
    const bool accepted = dialog.Run(nullptr);
    name_ = dialog.UserName();
    return accepted;
  }

  static QStringList Entries(DesktopScript& script, QWidget* window) {
    auto* box = qobject_cast<QComboBox*>(script.Child(window, IDC_LOGON_USER));
    QStringList entries;
    script.Do([&] {
      for (int index = 0; index < box->count(); ++index)
        entries << box->itemText(index);
    });
    return entries;
  }
  static QRect Place(DesktopScript& script, QWidget* window, int id) {
    QWidget* child = script.Child(window, id);
    QRect place;
    script.Do([&] { place = QRect(child->mapTo(window, QPoint()), child->size()); });
    return place;
  }

  LogonSystem system_ = LogonSystem::kQuillgate;
  KnownUsers users_;
  GdiPlus gdiPlus_;
  bool bannerTimerUsed_ = false;
  PasswordPause pause_;
  std::wstring name_;
};

TEST_F(LogonDialogTest, EveryUserIsListedAndTheRightPasswordLogsTheChosenOneOn) {
  EXPECT_TRUE(Run(IDOK, [](DesktopScript& script, QWidget* window) {
    EXPECT_EQ(Entries(script, window), (QStringList{"Anna", "Bo", "Cy"}));
    EXPECT_EQ(script.TextOf(window, IDC_LOGON_USER), "Anna");
    EXPECT_EQ(script.TextOf(window, IDC_LOGON_EXPLANATION),
              "You need to log on to use the Internet connection of this computer.");
    EXPECT_EQ(script.TextOf(window, IDC_LOGON_USER_LABEL), "User name:");
    EXPECT_EQ(script.TextOf(window, IDC_LOGON_PASSWORD_LABEL), "Password:");
    auto* users = qobject_cast<QComboBox*>(script.Child(window, IDC_LOGON_USER));
    script.Do([&] { users->setFocus(); });
    script.Key(Qt::Key_Down);
    script.Type(window, IDC_LOGON_PASSWORD, "Bo!");
  }));
  EXPECT_EQ(name_, L"Bo");
  EXPECT_EQ(settings_.GetSetting(SettingKey::kLastLogonName, L""), L"Bo");
}

TEST_F(LogonDialogTest, TheLastUserIsPreselectedIfThereStillIsOneAndTypesThePassword) {
  const struct {
    const wchar_t* last;
    const char* selected;
    int focused;
  } cases[] = {{L"Cy", "Cy", IDC_LOGON_PASSWORD},
               {L"Gone", "Anna", IDC_LOGON_USER},
               {L"", "Anna", IDC_LOGON_USER}};
  for (const auto& each : cases) {
    settings_.SetSetting(SettingKey::kLastLogonName, each.last);
    EXPECT_FALSE(Run(IDCANCEL, [&](DesktopScript& script, QWidget* window) {
      EXPECT_EQ(script.TextOf(window, IDC_LOGON_USER), each.selected);
      const QWidget* focused = script.Child(window, each.focused);
      script.Await([&] { return focused->hasFocus(); }, "focus");
    }));
  }
}

TEST_F(LogonDialogTest, TheThirdWrongPasswordEndsItAndTypingReplacesTheOneBefore) {
  settings_.SetSetting(SettingKey::kLastLogonName, L"Cy");
  EXPECT_FALSE(Run(0, [this](DesktopScript& script, QWidget* window) {
    for (int attempt = 0; attempt < 3; ++attempt) {
      script.Type(window, IDC_LOGON_PASSWORD, "Anna!");
      EXPECT_EQ(script.TextOf(window, IDC_LOGON_PASSWORD), "Anna!");
      script.Key(Qt::Key_Return);
      EXPECT_EQ(CloseBox(script), "The password you entered is incorrect. Please try again.");
      if (attempt < 2) EndPause(script, window);
    }
  }));
  EXPECT_EQ(name_, L"");
  EXPECT_EQ(settings_.GetSetting(SettingKey::kLastLogonName, L""), L"Cy");
}

TEST_F(LogonDialogTest, TheOverrideAsksForItsPasswordInTheUsersPlace) {
  QRect user;
  QRect userLabel;
  Run(IDCANCEL, [&](DesktopScript& script, QWidget* window) {
    user = Place(script, window, IDC_LOGON_USER);
    userLabel = Place(script, window, IDC_LOGON_USER_LABEL);
    const QRect label = Place(script, window, IDC_LOGON_PASSWORD_LABEL);
    EXPECT_EQ(label.left(), userLabel.left());
    EXPECT_GT(Place(script, window, IDC_LOGON_PASSWORD).top(), user.bottom() + 5);
  });
  system_ = LogonSystem::kNone;
  EXPECT_TRUE(Run(IDOK, [&](DesktopScript& script, QWidget* window) {
    EXPECT_EQ(script.TextOf(window, IDC_LOGON_EXPLANATION),
              "Please enter the security override password.");
    EXPECT_EQ(Entries(script, window), QStringList{"Security override"});
    for (const int id : {IDC_LOGON_USER, IDC_LOGON_USER_LABEL})
      EXPECT_FALSE(::IsWindowVisible(script.HandleOf(script.Child(window, id))));
    // Exact where a dialog unit is 6 by 13 pixels; larger fonts round otherwise.
    const QRect password = Place(script, window, IDC_LOGON_PASSWORD);
    const QRect label = Place(script, window, IDC_LOGON_PASSWORD_LABEL);
    EXPECT_LE((password.topLeft() - user.topLeft()).manhattanLength(), 1);
    EXPECT_LE((label.topLeft() - userLabel.topLeft()).manhattanLength(), 2);
    script.Type(window, IDC_LOGON_PASSWORD, "Admin!");
  }));
  EXPECT_EQ(name_, L"Admin");
}

TEST_F(LogonDialogTest, TheBannerReachesTheRightEdge) {
  Run(IDCANCEL, [](DesktopScript& script, QWidget* window) {
    QImage image;
    script.Do([&] {
      window->resize(400, window->height());
      image = window->grab().toImage();
    });
    for (const int y : {0, 40, LogonBanner::kHeight - 1}) {
      EXPECT_EQ(image.pixel(399, y), image.pixel(LogonBanner::kWidth - 1, y));
      EXPECT_NE(image.pixel(399, y), image.pixel(399, LogonBanner::kHeight + 5));
    }
  });
}

TEST_F(LogonDialogTest, OnlyTheFirstBannerOfTheProcessIsRepaintedByATimer) {
  for (const bool used : {false, true}) {
    EXPECT_EQ(bannerTimerUsed_, used);
    Run(IDCANCEL, [&](DesktopScript& script, QWidget* window) {
      HWND handle = script.HandleOf(window);
      script.Await([&] { return bannerTimerUsed_; }, "painted banner");
      script.Do([&] { EXPECT_EQ(::KillTimer(handle, 1) != FALSE, !used); });
    });
  }
}

TEST_F(LogonDialogTest, TheTextsAreThoseOfTheInterfaceLanguage) {
  Run(IDCANCEL, [&](DesktopScript& script, QWidget* window) {
    const HWND handle = script.HandleOf(window);
    catalogue_.SetInterfaceLanguage(1053);
    script.Do([handle] { ::PostMessageW(handle, kRefreshTexts, 0, 0); });
    script.AwaitWindow("Quillgate - Inloggning");
    EXPECT_EQ(script.TextOf(window, IDCANCEL), "Avbryt");
  });
}

}  // namespace
}  // namespace quillgate
