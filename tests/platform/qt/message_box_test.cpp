// Message boxes answered with real clicks and keys.
#include <QAbstractButton>
#include <QMessageBox>
#include <algorithm>
#include <atomic>

#include "desktop/dialog_driver.h"
#include "platform/kernel/locale_source.h"
#include "platform/qt/window_fixture.h"

namespace {

using Use = std::function<void(QMessageBox&)>;

QMessageBox* AwaitBox(DesktopScript& script, const QString& title) {
  return qobject_cast<QMessageBox*>(script.AwaitWindow(title));
}

// From left to right.
QList<QAbstractButton*> ButtonsOf(const QMessageBox& box) {
  auto buttons = box.buttons();
  std::ranges::sort(buttons, {}, [](auto* each) { return each->mapToGlobal(QPoint()).x(); });
  return buttons;
}

Use Click(std::size_t place) {
  return [place](QMessageBox& box) {
    QTest::mouseClick(ButtonsOf(box).at(static_cast<int>(place)), Qt::LeftButton);
  };
}

Use Press(Qt::Key key) {
  return [key](QMessageBox& box) { QTest::keyClick(&box, key); };
}

class MessageBoxOnDesktop : public WindowOnDesktop {
 protected:
  // Asks as the window thread does.
  static int Ask(UINT type, const Use& use) {
    int answer = -1;
    const DesktopScript user([&](DesktopScript& script) {
      QMessageBox* box = AwaitBox(script, "Program");
      script.Do([&] { use(*box); });
    });
    OnWindowThread(
        [&] { answer = ::MessageBoxW(nullptr, L"Go on <b>now</b>?", L"Program", type); });
    return answer;
  }
};

TEST_F(MessageBoxOnDesktop, EveryTypeHasItsButtonsItsDefaultAndItsWayOut) {
  const struct {
    UINT type;
    std::vector<int> buttons;
    int escape;  // 0: it stays
  } cases[] = {
      {MB_OK, {IDOK}, IDOK},
      {MB_OKCANCEL, {IDOK, IDCANCEL}, IDCANCEL},
      {MB_ABORTRETRYIGNORE, {IDABORT, IDRETRY, IDIGNORE}, 0},
      {MB_YESNOCANCEL, {IDYES, IDNO, IDCANCEL}, IDCANCEL},
      {MB_YESNO, {IDYES, IDNO}, 0},
      {MB_RETRYCANCEL, {IDRETRY, IDCANCEL}, IDCANCEL},
  };
  const Use close = [](QMessageBox& box) { box.close(); };
  for (const auto& each : cases) {
    for (std::size_t place = 0; place < each.buttons.size(); ++place)
      EXPECT_EQ(Ask(each.type, Click(place)), each.buttons[place]) << "type " << each.type;
    for (std::size_t number = 0; number < 3; ++number) {
      const UINT type = each.type | static_cast<UINT>(number * MB_DEFBUTTON2);
      const std::size_t expected = number < each.buttons.size() ? number : 0;
      EXPECT_EQ(Ask(type, Press(Qt::Key_Return)), each.buttons[expected]) << "type " << type;
    }
    for (const Use& leave : {Press(Qt::Key_Escape), close}) {
      bool stays = false;
      const int answer = Ask(each.type, [&](QMessageBox& box) {
        leave(box);
        stays = box.isVisible();
        if (stays) Click(0)(box);
      });
      EXPECT_EQ(stays, each.escape == 0) << "type " << each.type;
      EXPECT_EQ(answer, stays ? each.buttons[0] : each.escape) << "type " << each.type;
    }
  }
}

TEST_F(MessageBoxOnDesktop, ItShowsWhatItWasGiven) {
  const std::pair<UINT, QMessageBox::Icon> cases[] = {
      {MB_OK, QMessageBox::NoIcon},
      {MB_ICONERROR, QMessageBox::Critical},
      {MB_ICONQUESTION, QMessageBox::Question},
      {MB_ICONEXCLAMATION, QMessageBox::Warning},
      {MB_ICONINFORMATION | MB_SETFOREGROUND | MB_TOPMOST, QMessageBox::Information},
  };
  for (const auto& [type, icon] : cases) {
    Ask(type, [&](QMessageBox& box) {
      EXPECT_EQ(box.icon(), icon);
      EXPECT_EQ(box.text(), "Go on <b>now</b>?");
      EXPECT_EQ(box.textFormat(), Qt::PlainText);
      Press(Qt::Key_Return)(box);
    });
  }
}

TEST_F(MessageBoxOnDesktop, ButtonsSpeakTheUsersLanguage) {
  const auto captions = [] {
    QStringList texts;
    Ask(MB_YESNOCANCEL, [&](QMessageBox& box) {
      for (const QAbstractButton* button : ButtonsOf(box))
        texts << button->text();
      Click(0)(box);
    });
    return texts;
  };
  EXPECT_EQ(captions(), QStringList({"&Yes", "&No", "Cancel"}));
  const LANGID swedish = MAKELANGID(LANG_SWEDISH, SUBLANG_DEFAULT);
  platform::SetLocaleChoice(platform::LocaleChoice{swedish, 0});
  EXPECT_EQ(captions(), QStringList({"&Ja", "&Nej", "Avbryt"}));
  platform::SetLocaleChoice(std::nullopt);
}

TEST_F(MessageBoxOnDesktop, TheOwnerIsDisabledMeanwhile) {
  const DesktopScript user([&](DesktopScript& script) {
    QMessageBox* box = AwaitBox(script, "Caption");
    script.Do([&] {
      EXPECT_FALSE(::IsWindowEnabled(window_));
      Click(0)(*box);
    });
  });
  WithWindow([this] {
    ::MessageBoxW(window_, L"Text", L"Caption", MB_OK);
    EXPECT_TRUE(::IsWindowEnabled(window_));
  });
}

TEST_F(MessageBoxOnDesktop, QuittingClosesItAndIsPassedOn) {
  OnWindowThread([] {
    const HWND window = Create();
    ::SetTimer(window, 1, 10, [](HWND it, UINT, UINT_PTR, DWORD) {
      ::KillTimer(it, 1);
      ::PostQuitMessage(6);
    });
    EXPECT_EQ(::MessageBoxW(nullptr, L"Text", L"Caption", MB_YESNO), IDOK);
    MSG message{};
    EXPECT_FALSE(::GetMessageW(&message, nullptr, 0, 0));
    EXPECT_EQ(message.wParam, 6u);
  });
}

TEST_F(MessageBoxOnDesktop, TwoThreadsMayAskAtOnce) {
  const DesktopScript user([](DesktopScript& script) {
    QMessageBox* first = AwaitBox(script, "first");
    QMessageBox* second = AwaitBox(script, "second");
    // The one that opened last is inside the other's loop, but either may be answered first.
    script.Do([&] { Click(0)(*first); });
    script.AwaitNoWindow("first");
    script.Do([&] { Click(0)(*second); });
  });
  OnWindowThread([&] {
    Create(0);
    std::atomic<int> left = 2;
    const DWORD owner = ::GetCurrentThreadId();
    std::vector<std::thread> askers;
    for (const wchar_t* title : {L"first", L"second"}) {
      askers.emplace_back([&, title] {
        EXPECT_EQ(::MessageBoxW(nullptr, L"text", title, MB_OK), IDOK);
        if (--left == 0) ::PostThreadMessageW(owner, WM_QUIT, 0, 0);
      });
    }
    MSG message;
    while (::GetMessageW(&message, nullptr, 0, 0) > 0)
      ::DispatchMessageW(&message);
    for (std::thread& each : askers)
      each.join();
  });
}

}  // namespace
