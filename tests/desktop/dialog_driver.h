// The user in a test with a desktop: a script on a thread of its own that finds windows and clicks
// and types in them, while the test sits in a dialog's loop. Every step has a limit. When a step
// fails, or the test is still in its loop a while after the script has come to its end, the test
// fails with a message and the loops of the window thread are ended by WM_QUIT, so that no test
// hangs. The script may be made before there is any window; make it where the test asserts, before
// the call that opens the dialog.
#pragma once

#include <windows.h>

#include <QString>
#include <QWidget>
#include <atomic>
#include <functional>
#include <future>
#include <thread>

class DesktopScript {
 public:
  explicit DesktopScript(std::function<void(DesktopScript&)> body);
  // Waits for the script to end. On the window thread messages and events flow meanwhile.
  ~DesktopScript();
  DesktopScript(const DesktopScript&) = delete;
  DesktopScript& operator=(const DesktopScript&) = delete;

  // --- for the script, which ends here if they fail ---
  // Runs in the window thread and returns when that is done. For work that opens a dialog, which
  // would not return, there is Post.
  void Do(std::function<void()> work);
  void Post(std::function<void()> work);

  // Looks at the condition in the window thread until it holds; `what` completes "there is no ...".
  void Await(const std::function<bool()>& condition, const QString& what);

  // A visible top-level window with that title.
  QWidget* AwaitWindow(const QString& title);
  // Until no visible top-level window has that title.
  void AwaitNoWindow(const QString& title);
  // The control of that number, in the window or in a window inside it.
  QWidget* Child(QWidget* window, int id);

  // The left button in the middle of a visible, enabled widget; in the mark of a check box or radio
  // button.
  void Click(QWidget* widget);
  void Click(QWidget* window, int id) { Click(Child(window, id)); }
  // To the widget with the keyboard, or in lack of one to the active window.
  void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  // Gives the widget the keyboard first.
  void Type(QWidget* widget, const QString& text);
  void Type(QWidget* window, int id, const QString& text) { Type(Child(window, id), text); }

  // What a widget shows: the text of a label, button, field or message box, else its title.
  QString TextOf(QWidget* widget);
  QString TextOf(QWidget* window, int id) { return TextOf(Child(window, id)); }
  HWND HandleOf(QWidget* widget);

 private:
  void Run(const std::function<void(DesktopScript&)>& body);
  void AwaitDesktop();
  [[noreturn]] static void Fail(const QString& text);
  void DriveUntilEnded();

  std::promise<void> left_;  // the test, its loops
  std::atomic<bool> ended_ = false;
  std::thread thread_;
};
