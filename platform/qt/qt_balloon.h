// A balloon next to an icon of the notification area: a bold title with its icon, the text under
// it, a button that closes it. Lives on the window thread.
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
  // Shows it. It does not take the keyboard. `onEnd` is called once, and may end the object; it is
  // not called when the object ends before.
  QtBalloon(const TrayBalloon& balloon, const QRect& icon, std::function<void(BalloonEnd)> onEnd);
  ~QtBalloon();
  QtBalloon(const QtBalloon&) = delete;
  QtBalloon& operator=(const QtBalloon&) = delete;

 private:
  const QPointer<QWidget> widget_;
  QTimer time_;
};

}  // namespace platform
