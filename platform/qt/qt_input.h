// Reports mouse and keyboard events of the widget of a window that paints itself. The toolkit lets
// the widget where a button was pressed capture the mouse until the button is released; here the
// widget under the pointer receives the mouse. Owned by the window's peer, on the window thread.
#pragma once

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QWidget>

#include "platform/user/window_peer.h"

namespace platform {

// Reports a key that went down or up; nothing for one without a virtual key. True when the window
// uses it.
bool ReportKey(const QKeyEvent& event, WindowEvents& events);

class QtInput final : public QObject {
 public:
  QtInput(QWidget* widget, WindowEvents& events);
  ~QtInput() override;

  void SetPointer(PointerShape shape);

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void OnMouse(const QMouseEvent& event);
  bool OnKey(QKeyEvent& event);

  const QPointer<QWidget> widget_;
  WindowEvents& events_;
  std::optional<PointerShape> pointer_;
};

}  // namespace platform
