// Message boxes answered with real clicks and keys, on Qt's offscreen platform unless
// QT_QPA_PLATFORM names another.
#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <atomic>
#include <functional>
#include <future>
#include <thread>

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

void CALLBACK Drive(HWND window, UINT, UINT_PTR id, DWORD) {
  auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
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

Driver Click(QMessageBox::StandardButton button) {
  return [button](QMessageBox& box) { QTest::mouseClick(box.button(button), Qt::LeftButton); };
}

Driver Press(Qt::Key key) {
  return [key](QMessageBox& box) { QTest::keyClick(&box, key); };
}

TEST(MessageBoxOnDesktop, TheButtonThatIsClickedIsTheAnswer) {
  EXPECT_EQ(Ask(MB_OK, Click(QMessageBox::Ok)), IDOK);
  EXPECT_EQ(Ask(MB_OKCANCEL, Click(QMessageBox::Ok)), IDOK);
  EXPECT_EQ(Ask(MB_OKCANCEL, Click(QMessageBox::Cancel)), IDCANCEL);
  EXPECT_EQ(Ask(MB_YESNO, Click(QMessageBox::Yes)), IDYES);
  EXPECT_EQ(Ask(MB_YESNO, Click(QMessageBox::No)), IDNO);
}

TEST(MessageBoxOnDesktop, KeysAnswerToo) {
  EXPECT_EQ(Ask(MB_OK, Press(Qt::Key_Return)), IDOK);
  EXPECT_EQ(Ask(MB_OK, Press(Qt::Key_Escape)), IDOK);
  EXPECT_EQ(Ask(MB_OKCANCEL, Press(Qt::Key_Escape)), IDCANCEL);
  EXPECT_EQ(Ask(MB_YESNO, Press(Qt::Key_Return)), IDYES);
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
  Ask(MB_OK | MB_ICONINFORMATION, icon(QMessageBox::Information));
}

TEST(MessageBoxOnDesktop, QuittingClosesItAndIsPassedOn) {
  driver = [](QMessageBox&) { ::PostQuitMessage(6); };
  int answer = -1;
  MSG message{};
  std::thread([&] {
    ::SetTimer(nullptr, 0, kInterval, Drive);
    answer = ::MessageBoxW(nullptr, L"Text", L"Caption", MB_OK);
    ::GetMessageW(&message, nullptr, 0, 0);
  }).join();
  EXPECT_EQ(answer, 0);
  EXPECT_EQ(message.message, WM_QUIT);
  EXPECT_EQ(message.wParam, 6u);
}

std::atomic<DWORD> drivenOn = 0;

TEST(MessageBoxOnDesktop, ABoxOfAnotherThreadOpensOnTheWindowThread) {
  driver = [](QMessageBox& box) {
    drivenOn = ::GetCurrentThreadId();
    QTest::mouseClick(box.button(QMessageBox::No), Qt::LeftButton);
  };
  WNDCLASSEXW windowClass{};
  windowClass.cbSize = sizeof windowClass;
  windowClass.lpfnWndProc = ::DefWindowProcW;
  windowClass.lpszClassName = L"Hidden";
  ::RegisterClassExW(&windowClass);
  std::promise<DWORD> ready;
  std::thread owner([&] {
    ::CreateWindowExW(0, L"Hidden", L"", 0, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
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
