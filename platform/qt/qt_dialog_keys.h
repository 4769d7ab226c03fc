// Looks at the keys of a dialog before its widgets do: those that dialogs understand go to the
// dialog's window. Watches each widget, since the application's own filters work on the thread
// alone that used the toolkit first. Lives on the window thread.
#pragma once

#include <QKeyEvent>
#include <QObject>
#include <QWidget>
#include <optional>

#include "platform/dialog/dialog_peers.h"

namespace platform {

// Whether the widget is in a dialog. Only there do the keys of texts count: a window of the
// program's own would have to ask for them itself.
bool IsInDialog(const QWidget& widget);

class QtDialogKeys final : public QObject {
 public:
  // Both outlive the object; the dialog has no widgets in it yet.
  QtDialogKeys(QWidget& dialog, DialogEvents& events);

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void Watch(QObject& child);
  bool OnKey(const QWidget& widget, const QKeyEvent& event);

  QWidget& dialog_;
  DialogEvents& events_;
};

}  // namespace platform
