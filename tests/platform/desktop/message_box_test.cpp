// Message boxes answered with real clicks and keys, on Qt's offscreen platform unless
// QT_QPA_PLATFORM names another.
#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <atomic>
#include <functional>
#include <future>
#include <map>
#include <thread>
#include <vector>

#include "platform/kit/hidden_window.h"
#include "platform/kernel/locale_source.h"

namespace {

class Offscreen : public ::testing::Environment {
 public:
  void SetUp() override { ::setenv("QT_QPA_PLATFORM", "offscreen", 0); }
};
[[maybe_unused]] const auto* const offscreen = ::testing::AddGlobalTestEnvironment(new Offscreen);

constexpr UINT kInterval = 10;  // milliseconds
constexpr int kMostTries = 1'000;

// What to do with the box as soon as it is there; run by a timer that is set before it opens.
using Driver = std::function<void(QMessageBox&)>;
Driver driver;
int tries = 0;

QMessageBox* OpenBox() {
  for (QWidget* each : QApplication::topLevelWidgets()) {
    auto* box = qobject_cast<QMessageBox*>(each);
    if (box != nullptr && box->isVisible()) return box;
  }
  return nullptr;
}

void CALLBACK Drive(HWND window, UINT, UINT_PTR id, DWORD) {
  QMessageBox* box = OpenBox();
  if (box == nullptr && ++tries < kMostTries) return;
  ::KillTimer(window, id);
  if (box != nullptr) {
    driver(*box);
  } else {
    ADD_FAILURE() << "no message box";
    ::PostQuitMessage(1);
  }
}

// Asks on a thread of its own, as the window thread.
int Ask(UINT type, Driver drivenBy) {
  driver = std::move(drivenBy);
  tries = 0;
  int answer = -1;
  std::thread([&] {
    ::SetTimer(nullptr, 0, kInterval, Drive);
    answer = ::MessageBoxW(nullptr, L"Go on <b>now</b>?", L"Program", type);
  }).join();
  return answer;
}

QAbstractButton* ButtonOf(const QMessageBox& box, int id) {
  return box.findChild<QAbstractButton*>(QString::number(id));
}

Driver Click(int id) {
  return [id](QMessageBox& box) { QTest::mouseClick(ButtonOf(box, id), Qt::LeftButton); };
}

Driver Press(Qt::Key key) {
  return [key](QMessageBox& box) { QTest::keyClick(&box, key); };
}

struct Set {
  UINT type;
  std::vector<int> buttons;
};
const std::vector<Set>& Sets() {
  static const std::vector<Set> sets = {
      {MB_OK, {IDOK}},
      {MB_OKCANCEL, {IDOK, IDCANCEL}},
      {MB_ABORTRETRYIGNORE, {IDABORT, IDRETRY, IDIGNORE}},
      {MB_YESNOCANCEL, {IDYES, IDNO, IDCANCEL}},
      {MB_YESNO, {IDYES, IDNO}},
      {MB_RETRYCANCEL, {IDRETRY, IDCANCEL}},
  };
  return sets;
}

TEST(MessageBoxOnDesktop, TheButtonThatIsClickedIsTheAnswer) {
  for (const Set& set : Sets()) {
    for (const int id : set.buttons)
      EXPECT_EQ(Ask(set.type, Click(id)), id) << "type " << set.type;
  }
}

TEST(MessageBoxOnDesktop, ItHasTheButtonsOfItsTypeFromLeftToRight) {
  for (const Set& set : Sets()) {
    std::map<int, int> idByPlace;
    Ask(set.type, [&](QMessageBox& box) {
      for (QAbstractButton* button : box.buttons())
        idByPlace[button->mapToGlobal(QPoint()).x()] = button->objectName().toInt();
      QTest::mouseClick(ButtonOf(box, set.buttons.front()), Qt::LeftButton);
    });
    std::vector<int> shown;
    for (const auto& [place, id] : idByPlace)
      shown.push_back(id);
    EXPECT_EQ(shown, set.buttons) << "type " << set.type;
  }
}

TEST(MessageBoxOnDesktop, EnterPressesTheDefaultButton) {
  for (const Set& set : Sets()) {
    for (std::size_t i = 0; i < 3; ++i) {
      const int expected = set.buttons[i < set.buttons.size() ? i : 0];
      const UINT type = set.type | static_cast<UINT>(i * MB_DEFBUTTON2);
      EXPECT_EQ(Ask(type, Press(Qt::Key_Return)), expected) << "type " << type;
    }
  }
}

TEST(MessageBoxOnDesktop, EscapeAndTheCloseBoxCancelWhereThatIsPossible) {
  const Driver close = [](QMessageBox& box) { box.close(); };
  for (const Driver& leave : {Press(Qt::Key_Escape), close}) {
    EXPECT_EQ(Ask(MB_OK, leave), IDOK);
    EXPECT_EQ(Ask(MB_OKCANCEL, leave), IDCANCEL);
    EXPECT_EQ(Ask(MB_YESNOCANCEL, leave), IDCANCEL);
    EXPECT_EQ(Ask(MB_RETRYCANCEL, leave), IDCANCEL);
    bool stays = false;
    const Driver tryToLeave = [&](QMessageBox& box) {
      leave(box);
      stays = box.isVisible();
      QTest::mouseClick(ButtonOf(box, IDNO), Qt::LeftButton);
    };
    EXPECT_EQ(Ask(MB_YESNO, tryToLeave), IDNO);
    EXPECT_TRUE(stays);
  }
}

TEST(MessageBoxOnDesktop, ItShowsWhatItWasGiven) {
  const auto icon = [](QMessageBox::Icon expected) {
    return [expected](QMessageBox& box) {
      EXPECT_EQ(box.icon(), expected);
      EXPECT_EQ(box.text(), "Go on <b>now</b>?");
      EXPECT_EQ(box.textFormat(), Qt::PlainText);
      EXPECT_EQ(box.windowTitle(), "Program");
      QTest::keyClick(&box, Qt::Key_Return);
    };
  };
  Ask(MB_OK, icon(QMessageBox::NoIcon));
  Ask(MB_OK | MB_ICONERROR, icon(QMessageBox::Critical));
  Ask(MB_OK | MB_ICONQUESTION, icon(QMessageBox::Question));
  Ask(MB_OK | MB_ICONEXCLAMATION, icon(QMessageBox::Warning));
  Ask(MB_OK | MB_ICONINFORMATION | MB_SETFOREGROUND | MB_TOPMOST, icon(QMessageBox::Information));
}

TEST(MessageBoxOnDesktop, ButtonsSpeakTheUsersLanguage) {
  const auto captions = [](UINT type) {
    QStringList texts;
    Ask(type, [&](QMessageBox& box) {
      for (const QAbstractButton* button : box.buttons())
        texts << button->text();
      box.buttons().first()->click();
    });
    texts.sort();
    return texts;
  };
  EXPECT_EQ(captions(MB_YESNOCANCEL), QStringList({"&No", "&Yes", "Cancel"}));
  const LANGID swedish = MAKELANGID(LANG_SWEDISH, SUBLANG_DEFAULT);
  platform::SetLocaleChoice(platform::LocaleChoice{swedish, 0});
  EXPECT_EQ(captions(MB_YESNOCANCEL), QStringList({"&Ja", "&Nej", "Avbryt"}));
  platform::SetLocaleChoice(std::nullopt);
}

TEST(MessageBoxOnDesktop, AnUnknownTypeFails) {
  EXPECT_EQ(::MessageBoxW(nullptr, L"Text", L"Caption", 0x6), 0);
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_MSGBOX_STYLE);
  EXPECT_EQ(::MessageBoxW(nullptr, L"Text", L"Caption", MB_OK | 0x4000), 0);
}

TEST(MessageBoxOnDesktop, TheOwnerIsDisabledMeanwhile) {
  BOOL enabled = TRUE;
  BOOL enabledAfter = FALSE;
  std::thread([&] {
    const HWND owner = ::CreateWindowExW(0, L"Static", L"Owner", WS_POPUP | WS_VISIBLE, 0, 0, 100,
                                         100, nullptr, nullptr, nullptr, nullptr);
    driver = [&](QMessageBox& box) {
      enabled = ::IsWindowEnabled(owner);
      box.buttons().first()->click();
    };
    ::SetTimer(nullptr, 0, kInterval, Drive);
    ::MessageBoxW(owner, L"Text", L"Caption", MB_OK);
    enabledAfter = ::IsWindowEnabled(owner);
    ::DestroyWindow(owner);
  }).join();
  EXPECT_FALSE(enabled);
  EXPECT_TRUE(enabledAfter);
}

TEST(MessageBoxOnDesktop, QuittingClosesItAndIsPassedOn) {
  driver = [](QMessageBox&) { ::PostQuitMessage(6); };
  int answer = -1;
  MSG message{};
  std::thread([&] {
    ::SetTimer(nullptr, 0, kInterval, Drive);
    answer = ::MessageBoxW(nullptr, L"Text", L"Caption", MB_YESNO);
    ::GetMessageW(&message, nullptr, 0, 0);
  }).join();
  EXPECT_EQ(answer, IDOK);
  EXPECT_EQ(message.message, WM_QUIT);
  EXPECT_EQ(message.wParam, 6u);
}

std::atomic<DWORD> drivenOn = 0;

TEST(MessageBoxOnDesktop, ABoxOfAnotherThreadOpensOnTheWindowThread) {
  driver = [](QMessageBox& box) {
    drivenOn = ::GetCurrentThreadId();
    QTest::mouseClick(ButtonOf(box, IDNO), Qt::LeftButton);
  };
  std::promise<DWORD> ready;
  std::thread owner([&] {
    const HiddenWindow window;
    ::SetTimer(nullptr, 0, kInterval, Drive);
    ready.set_value(::GetCurrentThreadId());
    MSG message;
    while (::GetMessageW(&message, nullptr, 0, 0) > 0)
      ::DispatchMessageW(&message);
  });
  const DWORD windowThread = ready.get_future().get();
  EXPECT_EQ(::MessageBoxW(nullptr, L"Text", L"Caption", MB_YESNO), IDNO);
  EXPECT_EQ(drivenOn, windowThread);
  ::PostThreadMessageW(windowThread, WM_QUIT, 0, 0);
  owner.join();
}

}  // namespace
