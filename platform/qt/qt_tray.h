// Icons in the notification area, shown by Qt. Lives on the window thread.
#pragma once

#include <QTimer>
#include <map>
#include <memory>

#include "platform/qt/qt_tray_icon.h"
#include "platform/shell/tray_backend.h"

namespace platform {

class QtTray final : public TrayBackend {
 public:
  QtTray();

  bool Open(TrayEvents& events) override;
  void SetIcon(const TrayIconKey& key, const TrayIconLook& look) override;
  void RemoveIcon(const TrayIconKey& key) override;
  void ShowBalloon(const TrayIconKey& key, const TrayBalloon& balloon) override;
  void HideBalloon(const TrayIconKey& key) override;

 private:
  void WatchArea();
  void OnAreaChanged();
  QtTrayIcon* Find(const TrayIconKey& key) const;

  TrayEvents* events_ = nullptr;
  // Fires once all receivers have handled the event that reported the change.
  QTimer areaChange_;
  std::map<TrayIconKey, std::unique_ptr<QtTrayIcon>> icons_;
};

}  // namespace platform
