// The toolkit's application object. It overrides notify() to see the events of every widget: an
// event filter on the application works only on the first thread that used the toolkit. Lives on
// the window thread.
#pragma once

#include <QApplication>

#include "platform/qt/qt_display_watch.h"
#include "platform/qt/qt_key_state.h"

namespace platform {

class QtApplication final : public QApplication {
 public:
  // The arguments and the watch must outlive the application.
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

  // Drops are never accepted, not even by the toolkit's edit fields.
  static bool IsDrag(QEvent::Type type) {
    return type == QEvent::DragEnter || type == QEvent::DragMove || type == QEvent::Drop;
  }

  QtDisplayWatch& watch_;
  QtKeyState keys_;
};

}  // namespace platform
