#include "platform/qt/qt_tray_icon.h"

#include <shellapi.h>

#include <QApplication>
#include <QPixmap>
#include <chrono>

#include "platform/qt/qt_image.h"

namespace platform {
namespace {

// The time in which a notification area positions a new icon.
constexpr std::chrono::milliseconds kTimeToDock{500};

QIcon MadeIcon(const IconImages& images) {
  QIcon icon;
  for (const Image& each : images.images)
    icon.addPixmap(QPixmap::fromImage(DecodedImage(each)));
  return icon;
}

// The icon of a balloon on the message bus.
QSystemTrayIcon::MessageIcon MessageIconOf(DWORD icon) {
  switch (icon) {
    case NIIF_INFO:
      return QSystemTrayIcon::Information;
    case NIIF_WARNING:
      return QSystemTrayIcon::Warning;
    case NIIF_ERROR:
      return QSystemTrayIcon::Critical;
    default:
      return QSystemTrayIcon::NoIcon;
  }
}

}  // namespace

QtTrayIcon::QtTrayIcon(std::function<void(UINT)> notify) : notify_(std::move(notify)) {
  QObject::connect(&icon_, &QSystemTrayIcon::activated,
                   [this](QSystemTrayIcon::ActivationReason reason) { OnActivated(reason); });
  // Balloons that the message bus shows report clicks, but not their end.
  QObject::connect(&icon_, &QSystemTrayIcon::messageClicked,
                   [this] { notify_(NIN_BALLOONUSERCLICK); });
  awaitingBounds_.setSingleShot(true);
  awaitingBounds_.callOnTimeout([this] { ShowAwaitedBalloon(); });
}

void QtTrayIcon::SetLook(const TrayIconLook& look) {
  if (look.image != nullptr && look.image != image_) icon_.setIcon(MadeIcon(*look.image));
  image_ = look.image;
  icon_.setToolTip(QString::fromStdWString(look.tip));
  const bool isShown = !look.isHidden && image_ != nullptr;
  if (isShown == icon_.isVisible()) return;
  icon_.setVisible(isShown);
  if (isShown) {
    sinceShown_.start();
  } else {
    HideBalloon();
  }
}

void QtTrayIcon::ShowBalloon(const TrayBalloon& balloon) {
  HideBalloon();
  if (!icon_.isVisible()) return;
  awaited_ = balloon;
  const std::chrono::milliseconds passed(sinceShown_.elapsed());
  awaitingBounds_.start(std::max(kTimeToDock - passed, std::chrono::milliseconds::zero()));
}

void QtTrayIcon::HideBalloon() {
  awaitingBounds_.stop();
  if (balloon_ == nullptr) return;
  balloon_.reset();
  notify_(NIN_BALLOONHIDE);
}

void QtTrayIcon::ShowAwaitedBalloon() {
  // Areas on the message bus show balloons themselves and do not report the icon's bounds.
  if (!icon_.geometry().isEmpty()) {
    ShowOwnBalloon();
  } else {
    icon_.showMessage(QString::fromStdWString(awaited_.title),
                      QString::fromStdWString(awaited_.text), MessageIconOf(awaited_.icon),
                      static_cast<int>(awaited_.duration.count()));
  }
  notify_(NIN_BALLOONSHOW);
}

void QtTrayIcon::ShowOwnBalloon() {
  balloon_ = std::make_unique<QtBalloon>(awaited_, icon_.geometry(),
                                         [this](BalloonEnd end) { OnBalloonEnded(end); });
}

void QtTrayIcon::OnBalloonEnded(BalloonEnd end) {
  balloon_.reset();
  notify_(end == BalloonEnd::kClicked ? NIN_BALLOONUSERCLICK : NIN_BALLOONTIMEOUT);
}

void QtTrayIcon::OnActivated(QSystemTrayIcon::ActivationReason reason) {
  switch (reason) {
    case QSystemTrayIcon::Trigger:
      return OnClick();
    case QSystemTrayIcon::DoubleClick:
      return OnDoubleClick();
    case QSystemTrayIcon::Context:
      notify_(WM_RBUTTONDOWN);
      return notify_(WM_RBUTTONUP);
    default:
      return;
  }
}

// The toolkit reports a click as a whole. Areas on the message bus do not report double clicks: two
// clicks make one.
void QtTrayIcon::OnClick() {
  const bool isSecond =
      sinceClick_.isValid() && sinceClick_.elapsed() < QApplication::doubleClickInterval();
  if (isSecond) return OnDoubleClick();
  sinceClick_.start();
  notify_(WM_LBUTTONDOWN);
  notify_(WM_LBUTTONUP);
}

void QtTrayIcon::OnDoubleClick() {
  sinceClick_.invalidate();
  notify_(WM_LBUTTONDBLCLK);
  notify_(WM_LBUTTONUP);
}

}  // namespace platform
