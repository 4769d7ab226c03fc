// The toolkit's application object. It overrides notify() to see the events of every widget: an
// event filter on the application works only on the first thread that used the toolkit. Lives on
// the window thread.
#pragma once

#include <QApplication>

#include "platform/qt/qt_display_watch.h"
#include "platform/qt/qt_key_state.h"

namespace platform {

// Sees the input to all windows of the process before they do. Called inside the event.
class InputWatch {
 public:
  virtual ~InputWatch() = default;
  // KeyPress, ShortcutOverride, MouseButtonPress or ApplicationStateChange. True when no window is
  // to get the event.
  virtual bool OnInput(QEvent& event) = 0;
};

class QtApplication final : public QApplication {
 public:
  // The arguments and the watch must outlive the application.
  QtApplication(int& argumentCount, char** arguments, QtDisplayWatch& watch)
      : QApplication(argumentCount, arguments), watch_(watch) {}

  const KeySet& KeysDown() const { return keys_.Down(); }

  // The watch must be released before it ends. It takes the place of another one.
  void SetInputWatch(InputWatch* watch) { inputWatch_ = watch; }
  // Ignored for a watch that is not set.
  void ReleaseInputWatch(const InputWatch* watch) {
    if (inputWatch_ == watch) inputWatch_ = nullptr;
  }

 private:
  bool notify(QObject* receiver, QEvent* event) override {
    watch_.OnBusy();
    keys_.Note(*event);
    if (IsDrag(event->type())) return false;
    if (IsInput(event->type()) && inputWatch_ != nullptr && inputWatch_->OnInput(*event)) {
      return true;
    }
    return QApplication::notify(receiver, event);
  }

  // Drops are never accepted, not even by the toolkit's edit fields.
  static bool IsDrag(QEvent::Type type) {
    return type == QEvent::DragEnter || type == QEvent::DragMove || type == QEvent::Drop;
  }

  // The toolkit's own threads have other events.
  static bool IsInput(QEvent::Type type) {
    return type == QEvent::KeyPress || type == QEvent::ShortcutOverride ||
           type == QEvent::MouseButtonPress || type == QEvent::ApplicationStateChange;
  }

  QtDisplayWatch& watch_;
  QtKeyState keys_;
  InputWatch* inputWatch_ = nullptr;
};

}  // namespace platform
