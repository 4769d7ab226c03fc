#include "platform/desktop/qt_window_peers.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

#include "platform/desktop/qt_painted_widget.h"
#include "platform/desktop/qt_peer.h"

namespace platform {
namespace {

class QtPlainPeer : public QtPeer<WindowPeer> {
 public:
  QtPlainPeer(QWidget* parent, Qt::WindowFlags flags, WindowEvents& events)
      : QtPeer(new QtPaintedWidget(parent, flags, events), events) {}
  ~QtPlainPeer() override {
    if (Widget() != nullptr) static_cast<QtPaintedWidget*>(Widget())->Forget();
  }
  QtPlainPeer(const QtPlainPeer&) = delete;
  QtPlainPeer& operator=(const QtPlainPeer&) = delete;
};

// The user cannot change a dialog's size.
class QtDialogPeer final : public QtPlainPeer {
 public:
  using QtPlainPeer::QtPlainPeer;

  void SetPlace(const RECT& place) override {
    Widget()->setMinimumSize(0, 0);
    Widget()->setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    QtPlainPeer::SetPlace(place);
    Widget()->setFixedSize(QtRect(place).size());
  }
};

constexpr Qt::WindowFlags kDialogFlags = Qt::Dialog | Qt::CustomizeWindowHint |
                                         Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                                         Qt::WindowCloseButtonHint;

}  // namespace

std::unique_ptr<WindowPeer> QtWindowPeers::MakeTopLevel(WindowEvents& events, TopLevelKind kind,
                                                        WindowPeer* owner) {
  QWidget* above = WidgetOf(owner);
  if (kind == TopLevelKind::kDialog) {
    return std::make_unique<QtDialogPeer>(above, kDialogFlags, events);
  }
  return std::make_unique<QtPlainPeer>(above, Qt::Window, events);
}

std::unique_ptr<WindowPeer> QtWindowPeers::MakeChild(WindowEvents& events, WindowPeer& parent) {
  return std::make_unique<QtPlainPeer>(WidgetOf(&parent), Qt::Widget, events);
}

POINT QtWindowPeers::CursorPlace() {
  const QPoint place = QCursor::pos();
  return {place.x(), place.y()};
}

SIZE QtWindowPeers::ScreenSize() {
  const QSize size = QGuiApplication::primaryScreen()->geometry().size();
  return {size.width(), size.height()};
}

RECT QtWindowPeers::WorkArea(POINT place) {
  const QScreen* at = QGuiApplication::screenAt({place.x, place.y});
  if (at == nullptr) at = QGuiApplication::primaryScreen();
  return WinRect(at->availableGeometry());
}

}  // namespace platform
