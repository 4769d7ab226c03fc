#include "desktop/dialog_driver.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>
#include <atomic>
#include <chrono>
#include <future>
#include <memory>

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
    if (taken_.test_and_set()) return;
    work_();
    done_.set_value();
  }
  // False when it has not been begun in time. Work under way is waited for without limit.
  bool Await() {
    const auto done = done_.get_future();
    if (done.wait_for(kStepLimit) == std::future_status::ready) return true;
    if (!taken_.test_and_set()) return false;
    done.wait();
    return true;
  }

 private:
  std::function<void()> work_;
  std::atomic_flag taken_;
  std::promise<void> done_;
};

void Send(const std::shared_ptr<Errand>& errand) {
  QMetaObject::invokeMethod(
      qApp, [errand] { errand->Run(); }, Qt::QueuedConnection);
}

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
  if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) return button->text();
  if (const auto* label = qobject_cast<const QLabel*>(widget)) return label->text();
  if (const auto* edit = qobject_cast<const QLineEdit*>(widget)) return edit->text();
  if (const auto* combo = qobject_cast<const QComboBox*>(widget)) return combo->currentText();
  return widget->windowTitle();
}

}  // namespace

DesktopScript::DesktopScript(std::function<void(DesktopScript&)> body)
    : thread_([this, body = std::move(body)] { Run(body); }) {}

DesktopScript::~DesktopScript() {
  {
    const std::lock_guard lock(mutex_);
    leaving_ = true;
    changed_.notify_all();
  }
  DriveUntilEnded();
  thread_.join();
  DropQuit();
}

void DesktopScript::Run(const std::function<void(DesktopScript&)>& body) {
  try {
    AwaitDesktop();
    body(*this);
  } catch (const std::exception& failure) {
    Report(failure.what());
  }
  EndLoopsUntilLeft();
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
  throw Stopped(text.toStdString());
}

void DesktopScript::Report(const std::string& text) {
  ADD_FAILURE() << "script: " << text;
  failed_ = true;
}

// A script that failed ends the loops at once, another only after it has waited in vain for the
// test to come out of them.
void DesktopScript::EndLoopsUntilLeft() {
  const auto hasLeftWithin = [this](std::chrono::milliseconds limit) {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, limit, [this] { return leaving_; });
  };
  if (!HasFailed()) {
    if (hasLeftWithin(kLeaveLimit)) return;
    Report("the test is still in a loop");
  }
  do {
    const auto windowThread = platform::WindowThread();
    if (windowThread == nullptr) continue;
    windowThread->PostQuit(1);
    posted_ = true;
  } while (!hasLeftWithin(kQuitInterval));
}

void DesktopScript::DriveUntilEnded() {
  if (!platform::IsWindowThread()) return;
  while (!ended_) {
    MSG message;
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
      ::TranslateMessage(&message);
      ::DispatchMessageW(&message);
    }
    std::this_thread::sleep_for(1ms);
  }
}

// What ended the loops of this test shall not end those of the next.
void DesktopScript::DropQuit() {
  if (!posted_ || !platform::IsWindowThread()) return;
  MSG message;
  while (::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) {
  }
}

void DesktopScript::Do(std::function<void()> work) {
  const auto errand = std::make_shared<Errand>(std::move(work));
  Send(errand);
  if (!errand->Await()) Fail("the window thread does not look at its events");
}

void DesktopScript::Post(std::function<void()> work) {
  Send(std::make_shared<Errand>(std::move(work)));
}

void DesktopScript::Await(const std::function<bool()>& condition, const QString& what) {
  const auto limit = std::chrono::steady_clock::now() + kStepLimit;
  for (;;) {
    bool holds = false;
    QString titles;
    Do([&] {
      holds = condition();
      titles = VisibleTitles();
    });
    if (holds) return;
    if (std::chrono::steady_clock::now() > limit) {
      Fail(QString("there is no %1; windows: %2").arg(what, titles));
    }
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
  QString problem;
  Do([&] {
    if (!widget->isVisible() || !widget->isEnabled()) {
      problem = QString("control %1 is %2")
                    .arg(widget->objectName(), widget->isVisible() ? "disabled" : "hidden");
      return;
    }
    QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, ClickPosition(widget));
  });
  if (!problem.isEmpty()) Fail(problem);
}

void DesktopScript::DoubleClick(QWidget* widget) {
  Click(widget);
  Do([&] { QTest::mouseDClick(widget, Qt::LeftButton, Qt::NoModifier, ClickPosition(widget)); });
}

void DesktopScript::Key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  bool sent = false;
  Do([&] {
    QWidget* widget = KeyboardWidget();
    sent = widget != nullptr;
    if (sent) QTest::keyClick(widget, key, modifiers);
  });
  if (!sent) Fail("no window has the keyboard");
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
