// The logon dialog in front of a user who clicks and types.
#include "ui/logon_dialog.h"

#include <QComboBox>

#include "frame/desktop/frame_test.h"

namespace quillgate {
namespace {

const QString kTitle = "Quillgate - Log on";

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
  bool Run(LogonSystem system, const std::function<void(DesktopScript&, QWidget*)>& user) {
    LogonDialog dialog({ui_, settings_, gdiPlus_, bannerTimerUsed_, pause_}, system, users_);
    bool accepted = false;
    {
      DesktopScript script([&](DesktopScript& steps) { user(steps, steps.AwaitWindow(kTitle)); });
      accepted = dialog.Run(nullptr);
    }
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
  static QString Shown(DesktopScript& script, QWidget* window, int id) {
    return script.TextOf(script.Child(window, id));
  }

  KnownUsers users_;
  GdiPlus gdiPlus_;
  bool bannerTimerUsed_ = false;
  PasswordPause pause_;
  std::wstring name_;
};

TEST_F(LogonDialogTest, EveryUserIsListedAndTheRightPasswordLogsTheChosenOneOn) {
  EXPECT_TRUE(Run(LogonSystem::kQuillgate, [](DesktopScript& script, QWidget* window) {
    EXPECT_EQ(Entries(script, window), (QStringList{"Anna", "Bo", "Cy"}));
    EXPECT_EQ(Shown(script, window, IDC_LOGON_USER), "Anna");
    EXPECT_EQ(Shown(script, window, IDC_LOGON_EXPLANATION),
              "You need to log on to use the Internet connection of this computer.");
    EXPECT_EQ(Shown(script, window, IDC_LOGON_USER_LABEL), "User name:");
    EXPECT_EQ(Shown(script, window, IDC_LOGON_PASSWORD_LABEL), "Password:");
    auto* users = qobject_cast<QComboBox*>(script.Child(window, IDC_LOGON_USER));
    script.Do([&] { users->setFocus(); });
    script.Key(Qt::Key_Down);
    script.Type(window, IDC_LOGON_PASSWORD, "Bo!");
    script.Click(window, IDOK);
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
    EXPECT_FALSE(Run(LogonSystem::kQuillgate, [&](DesktopScript& script, QWidget* window) {
      EXPECT_EQ(Shown(script, window, IDC_LOGON_USER), each.selected);
      const QWidget* focused = script.Child(window, each.focused);
      script.Await([&] { return focused->hasFocus(); }, "focus");
      script.Click(window, IDCANCEL);
    }));
  }
}

TEST_F(LogonDialogTest, TheThirdWrongPasswordEndsItAndTypingReplacesTheOneBefore) {
  settings_.SetSetting(SettingKey::kLastLogonName, L"Cy");
  EXPECT_FALSE(Run(LogonSystem::kQuillgate, [this](DesktopScript& script, QWidget* window) {
    for (int attempt = 0; attempt < 3; ++attempt) {
      script.Type(window, IDC_LOGON_PASSWORD, "Anna!");
      EXPECT_EQ(Shown(script, window, IDC_LOGON_PASSWORD), "Anna!");
      script.Key(Qt::Key_Return);
      EXPECT_EQ(CloseBox(script), "The password you entered is incorrect. Please try again.");
      if (attempt < 2) EndPause(script, window);
    }
    script.AwaitNoWindow(kTitle);
  }));
  EXPECT_EQ(name_, L"");
  EXPECT_EQ(settings_.GetSetting(SettingKey::kLastLogonName, L""), L"Cy");
}

TEST_F(LogonDialogTest, TheOverrideAsksForItsPasswordInTheUsersPlace) {
  QRect user;
  QRect userLabel;
  Run(LogonSystem::kQuillgate, [&](DesktopScript& script, QWidget* window) {
    user = Place(script, window, IDC_LOGON_USER);
    userLabel = Place(script, window, IDC_LOGON_USER_LABEL);
    const QRect label = Place(script, window, IDC_LOGON_PASSWORD_LABEL);
    EXPECT_EQ(label.left(), userLabel.left());
    EXPECT_GT(Place(script, window, IDC_LOGON_PASSWORD).top(), user.bottom() + 5);
    script.Click(window, IDCANCEL);
  });
  EXPECT_TRUE(Run(LogonSystem::kNone, [&](DesktopScript& script, QWidget* window) {
    EXPECT_EQ(Shown(script, window, IDC_LOGON_EXPLANATION),
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
    script.Click(window, IDOK);
  }));
  EXPECT_EQ(name_, L"Admin");
}

TEST_F(LogonDialogTest, TheBannerReachesTheRightEdge) {
  Run(LogonSystem::kQuillgate, [](DesktopScript& script, QWidget* window) {
    QImage image;
    script.Do([&] {
      window->resize(400, window->height());
      image = window->grab().toImage();
    });
    for (const int y : {0, 40, LogonBanner::kHeight - 1}) {
      EXPECT_EQ(image.pixel(399, y), image.pixel(LogonBanner::kWidth - 1, y));
      EXPECT_NE(image.pixel(399, y), image.pixel(399, LogonBanner::kHeight + 5));
    }
    script.Click(window, IDCANCEL);
  });
}

TEST_F(LogonDialogTest, OnlyTheFirstBannerOfTheProcessIsRepaintedByATimer) {
  for (const bool used : {false, true}) {
    EXPECT_EQ(bannerTimerUsed_, used);
    Run(LogonSystem::kQuillgate, [&](DesktopScript& script, QWidget* window) {
      HWND handle = script.HandleOf(window);
      script.Await([&] { return bannerTimerUsed_; }, "painted banner");
      script.Do([&] { EXPECT_EQ(::KillTimer(handle, 1) != FALSE, !used); });
      script.Click(window, IDCANCEL);
    });
  }
}

TEST_F(LogonDialogTest, TheTextsAreThoseOfTheInterfaceLanguage) {
  const auto text = [this](MessageId id) {
    return QString::fromStdWString(catalogue_.GetMessageText(id));
  };
  Run(LogonSystem::kQuillgate, [&](DesktopScript& script, QWidget* window) {
    const HWND handle = script.HandleOf(window);
    catalogue_.SetInterfaceLanguage(1053);
    script.Do([handle] { ::PostMessageW(handle, kRefreshTexts, 0, 0); });
    EXPECT_NE(text(kMsgLogOnCaption), kTitle);
    script.AwaitWindow(text(kMsgLogOnCaption));
    EXPECT_EQ(Shown(script, window, IDCANCEL), text(kMsgCancel));
    script.Click(window, IDCANCEL);
  });
}

}  // namespace
}  // namespace quillgate
