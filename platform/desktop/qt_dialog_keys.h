// Looks at the input of a dialog before its widgets do: keys that dialogs understand go to the
// dialog's window, and a disabled dialog gets none at all. Lives on the window thread.
#pragma once

#include <QKeyEvent>
#include <QObject>
#include <QWidget>
#include <optional>

#include "platform/dialog/dialog_peers.h"

namespace platform {

class QtDialogKeys final : public QObject {
 public:
  // Both outlive the object.
  QtDialogKeys(QWidget& dialog, DialogEvents& events);

  void SetBlocked(bool blocked) { blocked_ = blocked; }

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool OnKey(const QWidget& widget, const QKeyEvent& event);

  QWidget& dialog_;
  DialogEvents& events_;
  bool blocked_ = false;
};

}  // namespace platform
