// One icon in the notification area: its image, its tip, its clicks and its balloon. Lives on the
// window thread.
#pragma once

#include <QElapsedTimer>
#include <QSystemTrayIcon>
#include <QTimer>
#include <functional>
#include <memory>

#include "platform/qt/qt_balloon.h"
#include "platform/shell/tray_backend.h"

namespace platform {

class QtTrayIcon final {
 public:
  // `notify` is called with each event to send to the icon's window.
  explicit QtTrayIcon(std::function<void(UINT)> notify);
  QtTrayIcon(const QtTrayIcon&) = delete;
  QtTrayIcon& operator=(const QtTrayIcon&) = delete;

  void SetLook(const TrayIconLook& look);
  // The balloon appears next to the icon as soon as the icon has its position.
  void ShowBalloon(const TrayBalloon& balloon);
  void HideBalloon();

 private:
  void OnActivated(QSystemTrayIcon::ActivationReason reason);
  void OnClick();
  void OnDoubleClick();
  void ShowAwaitedBalloon();
  void ShowOwnBalloon();
  void OnBalloonEnded(BalloonEnd end);

  const std::function<void(UINT)> notify_;
  std::shared_ptr<const IconImages> image_;
  QSystemTrayIcon icon_;
  QElapsedTimer sinceShown_;
  QElapsedTimer sinceClick_;
  TrayBalloon awaited_;
  QTimer awaitingBounds_;
  std::unique_ptr<QtBalloon> balloon_;
};

}  // namespace platform
