// Sees the keys of a dialog before its widgets do and passes the dialog keys to the dialog's
// window. Filters the events of each widget: an event filter on the application works only on the
// first thread that used the toolkit. Lives on the window thread.
#pragma once

#include <QKeyEvent>
#include <QObject>
#include <QWidget>
#include <optional>

#include "platform/dialog/dialog_peers.h"

namespace platform {

// Whether the widget is in a dialog. Mnemonics work only there: an ordinary window would have to
// handle them itself.
bool IsInDialog(const QWidget& widget);

class QtDialogKeys final : public QObject {
 public:
  // Both must outlive the object. The dialog must not have child widgets yet.
  QtDialogKeys(QWidget& dialog, DialogEvents& events);

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void Watch(QObject& child);
  bool OnKey(const QWidget& widget, const QKeyEvent& event);

  QWidget& dialog_;
  DialogEvents& events_;
};

}  // namespace platform
