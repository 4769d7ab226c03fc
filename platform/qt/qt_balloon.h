// A balloon next to an icon of the notification area: a bold title with its icon, the text below, a
// close button. Lives on the window thread.
#pragma once

#include <QPointer>
#include <QRect>
#include <QTimer>
#include <functional>

#include "platform/shell/tray_backend.h"

class QWidget;

namespace platform {

enum class BalloonEnd { kClicked, kClosed, kTimedOut };

class QtBalloon final {
 public:
  // Shows the balloon without taking the focus. `onEnd` is called once and may destroy the object.
  // It is not called when the object is destroyed first.
  QtBalloon(const TrayBalloon& balloon, const QRect& icon, std::function<void(BalloonEnd)> onEnd);
  ~QtBalloon();
  QtBalloon(const QtBalloon&) = delete;
  QtBalloon& operator=(const QtBalloon&) = delete;

 private:
  const QPointer<QWidget> widget_;
  QTimer time_;
};

}  // namespace platform
