#include "desktop/dialog_driver.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QRadioButton>
#include <QTest>
#include <QVariant>
#include <atomic>
#include <chrono>
#include <memory>
#include <stdexcept>

#include "platform/user/desktop.h"

namespace {

using namespace std::chrono_literals;

constexpr auto kPollInterval = 5ms;
constexpr auto kStepLimit = 10s;
// How long a loop may go on after the script's last step.
constexpr auto kLeaveLimit = 15s;
constexpr auto kQuitInterval = 200ms;

// One piece of work on its way to the window thread. Whoever gave up waiting for it takes it back,
// since what it uses is gone then.
class Errand {
 public:
  explicit Errand(std::function<void()> work) : work_(std::move(work)) {}

  void Run() {
    if (!taken_.test_and_set()) work_();
  }
  // False when it has not been begun in time. Work under way is waited for without limit, and what
  // it throws is thrown here.
  bool Await() {
    auto done = work_.get_future();
    const bool isDone = done.wait_for(kStepLimit) == std::future_status::ready;
    if (!isDone && !taken_.test_and_set()) return false;
    done.get();
    return true;
  }

 private:
  std::packaged_task<void()> work_;
  std::atomic_flag taken_;
};

QWidget* FindWindow(const QString& title) {
  for (QWidget* each : QApplication::topLevelWidgets()) {
    if (each->isVisible() && each->windowTitle() == title) return each;
  }
  return nullptr;
}

QString VisibleTitles() {
  QStringList titles;
  for (const QWidget* each : QApplication::topLevelWidgets()) {
    if (each->isVisible()) titles << '"' + each->windowTitle() + '"';
  }
  return titles.isEmpty() ? "none" : titles.join(", ");
}

// Only the mark and the text of these take clicks, however wide the widget is.
QPoint ClickPosition(const QWidget* widget) {
  const bool hasMark = qobject_cast<const QCheckBox*>(widget) != nullptr ||
                       qobject_cast<const QRadioButton*>(widget) != nullptr;
  return hasMark ? QPoint(8, widget->height() / 2) : widget->rect().center();
}

QWidget* KeyboardWidget() {
  if (QWidget* popup = QApplication::activePopupWidget()) return popup;
  if (QWidget* widget = QApplication::focusWidget()) return widget;
  return QApplication::activeWindow();
}

QString Text(const QWidget* widget) {
  for (const char* name : {"text", "currentText", "title"}) {
    const QVariant text = widget->property(name);
    if (text.isValid()) return text.toString();
  }
  return widget->windowTitle();
}

}  // namespace

DesktopScript::DesktopScript(std::function<void(DesktopScript&)> body)
    : thread_([this, body = std::move(body)] { Run(body); }) {}

DesktopScript::~DesktopScript() {
  left_.set_value();
  DriveUntilEnded();
  thread_.join();
}

// A script that failed, or has waited in vain for the test to come out of the loops, ends them.
void DesktopScript::Run(const std::function<void(DesktopScript&)>& body) {
  const auto left = left_.get_future();
  const auto hasLeftWithin = [&](std::chrono::milliseconds limit) {
    return left.wait_for(limit) == std::future_status::ready;
  };
  try {
    AwaitDesktop();
    body(*this);
    if (!hasLeftWithin(kLeaveLimit)) Fail("the test is still in a loop");
  } catch (const std::exception& failure) {
    ADD_FAILURE() << "script: " << failure.what();
  }
  while (!hasLeftWithin(kQuitInterval)) {
    if (const auto windowThread = platform::WindowThread()) windowThread->PostQuit(1);
  }
  ended_ = true;
}

void DesktopScript::AwaitDesktop() {
  const auto limit = std::chrono::steady_clock::now() + kStepLimit;
  while (platform::WindowThread() == nullptr) {
    if (std::chrono::steady_clock::now() > limit) Fail("there is no desktop");
    std::this_thread::sleep_for(kPollInterval);
  }
}

void DesktopScript::Fail(const QString& text) {
  throw std::runtime_error(text.toStdString());
}

// Once more after its end: what ended the loops of this test shall not end those of the next.
void DesktopScript::DriveUntilEnded() {
  if (!platform::IsWindowThread()) return;
  for (bool hasEnded = false; !hasEnded;) {
    hasEnded = ended_;
    MSG message;
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
      ::TranslateMessage(&message);
      ::DispatchMessageW(&message);
    }
    std::this_thread::sleep_for(1ms);
  }
}

void DesktopScript::Do(std::function<void()> work) {
  const auto errand = std::make_shared<Errand>(std::move(work));
  Post([errand] { errand->Run(); });
  if (!errand->Await()) Fail("the window thread does not look at its events");
}

void DesktopScript::Post(std::function<void()> work) {
  QMetaObject::invokeMethod(
      qApp, [work = std::move(work)] { work(); }, Qt::QueuedConnection);
}

void DesktopScript::Await(const std::function<bool()>& condition, const QString& what) {
  const auto limit = std::chrono::steady_clock::now() + kStepLimit;
  for (;;) {
    bool holds = false;
    Do([&] {
      holds = condition();
      if (holds || std::chrono::steady_clock::now() <= limit) return;
      Fail(QString("there is no %1; windows: %2").arg(what, VisibleTitles()));
    });
    if (holds) return;
    std::this_thread::sleep_for(kPollInterval);
  }
}

QWidget* DesktopScript::AwaitWindow(const QString& title) {
  QWidget* window = nullptr;
  Await([&] { return (window = FindWindow(title)) != nullptr; }, "window \"" + title + '"');
  return window;
}

void DesktopScript::AwaitNoWindow(const QString& title) {
  Await([&] { return FindWindow(title) == nullptr; }, "end of the window \"" + title + '"');
}

QWidget* DesktopScript::Child(QWidget* window, int id) {
  QWidget* child = nullptr;
  Do([&] { child = window->findChild<QWidget*>(QString::number(id)); });
  if (child == nullptr) Fail(QString("there is no control %1").arg(id));
  return child;
}

void DesktopScript::Click(QWidget* widget) {
  Do([&] {
    const char* problem = widget->isVisible() ? "disabled" : "hidden";
    if (!widget->isVisible() || !widget->isEnabled()) {
      Fail(QString("control %1 is %2").arg(widget->objectName(), problem));
    }
    QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, ClickPosition(widget));
  });
}

void DesktopScript::Key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  Do([&] {
    QWidget* widget = KeyboardWidget();
    if (widget == nullptr) Fail("no window has the keyboard");
    QTest::keyClick(widget, key, modifiers);
  });
}

void DesktopScript::Type(QWidget* widget, const QString& text) {
  Do([&] {
    widget->window()->activateWindow();
    widget->setFocus();
    QTest::keyClicks(widget, text);
  });
}

QString DesktopScript::TextOf(QWidget* widget) {
  QString text;
  Do([&] { text = Text(widget); });
  return text;
}

HWND DesktopScript::HandleOf(QWidget* widget) {
  UINT_PTR handle = 0;
  Do([&] { handle = widget->property("windowHandle").toULongLong(); });
  return reinterpret_cast<HWND>(handle);
}
