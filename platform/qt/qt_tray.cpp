#include "platform/qt/qt_tray.h"

#include <QCursor>
#include <QGuiApplication>
#include <QSystemTrayIcon>

namespace platform {
namespace {

// The availability query makes the toolkit watch for the area. On X11 the toolkit's request to be
// notified of the area's end is sent only with its next request, here that of QCursor::pos().
bool IsAreaThere() {
  const bool isThere = QSystemTrayIcon::isSystemTrayAvailable();
  QCursor::pos();
  return isThere;
}

}  // namespace

QtTray::QtTray() {
  areaChange_.setSingleShot(true);
  areaChange_.setInterval(0);
  areaChange_.callOnTimeout([this] { OnAreaChanged(); });
}

bool QtTray::Open(TrayEvents& events) {
  events_ = &events;
  const bool isThere = IsAreaThere();
  WatchArea();
  return isThere;
}

// On X11 the toolkit is notified when the owner of the area comes and goes, and emits a signal
// of the platform's native interface. On the message bus an area takes over existing icons by
// itself.
void QtTray::WatchArea() {
  if (QGuiApplication::platformName() != "xcb") return;
  // The class of this object is only declared in the public headers.
  auto* platform = reinterpret_cast<QObject*>(QGuiApplication::platformNativeInterface());
  if (platform == nullptr) return;
  QObject::connect(platform, SIGNAL(systemTrayWindowChanged(QScreen*)), &areaChange_,
                   SLOT(start()));
}

// Icons do not move to the next area: their programs add them again, and would have them twice.
void QtTray::OnAreaChanged() {
  icons_.clear();
  events_->OnAreaChanged(IsAreaThere());
}

QtTrayIcon* QtTray::Find(const TrayIconKey& key) const {
  const auto found = icons_.find(key);
  return found != icons_.end() ? found->second.get() : nullptr;
}

void QtTray::SetIcon(const TrayIconKey& key, const TrayIconLook& look) {
  auto& icon = icons_[key];
  if (icon == nullptr) {
    icon =
        std::make_unique<QtTrayIcon>([this, key](UINT event) { events_->OnNotified(key, event); });
  }
  icon->SetLook(look);
}

void QtTray::RemoveIcon(const TrayIconKey& key) {
  icons_.erase(key);
}

void QtTray::ShowBalloon(const TrayIconKey& key, const TrayBalloon& balloon) {
  if (QtTrayIcon* icon = Find(key)) icon->ShowBalloon(balloon);
}

void QtTray::HideBalloon(const TrayIconKey& key) {
  if (QtTrayIcon* icon = Find(key)) icon->HideBalloon();
}

}  // namespace platform
