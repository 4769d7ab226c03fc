// The toolkit's application, which sees the events of every widget. (Its event filters would not
// do: they work on the thread alone that used the toolkit first.) Lives on the window thread.
#pragma once

#include <QApplication>

#include "platform/qt/qt_display_watch.h"
#include "platform/qt/qt_key_state.h"

namespace platform {

class QtApplication final : public QApplication {
 public:
  // All of it lives as long as the application.
  QtApplication(int& argumentCount, char** arguments, QtDisplayWatch& watch)
      : QApplication(argumentCount, arguments), watch_(watch) {}

  const KeySet& KeysDown() const { return keys_.Down(); }

 private:
  bool notify(QObject* receiver, QEvent* event) override {
    watch_.OnBusy();
    keys_.Note(*event);
    if (IsDrag(event->type())) return false;
    return QApplication::notify(receiver, event);
  }

  // The layer's windows take no drops, whatever the toolkit's fields would.
  static bool IsDrag(QEvent::Type type) {
    return type == QEvent::DragEnter || type == QEvent::DragMove || type == QEvent::Drop;
  }

  QtDisplayWatch& watch_;
  QtKeyState keys_;
};

}  // namespace platform
