#include "platform/desktop/qt_window_peers.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

#include "platform/desktop/qt_peer.h"

namespace platform {
namespace {

class QtPlainPeer final : public QtPeer<WindowPeer> {
 public:
  QtPlainPeer(QWidget* widget, WindowEvents& events) : QtPeer(widget, events) {}
};

}  // namespace

std::unique_ptr<WindowPeer> QtWindowPeers::MakeTopLevel(WindowEvents& events, TopLevelKind kind,
                                                        WindowPeer* owner) {
  const auto flags = kind == TopLevelKind::kDialog ? Qt::Dialog : Qt::Window;
  return std::make_unique<QtPlainPeer>(new QWidget(WidgetOf(owner), flags), events);
}

std::unique_ptr<WindowPeer> QtWindowPeers::MakeChild(WindowEvents& events, WindowPeer& parent) {
  return std::make_unique<QtPlainPeer>(new QWidget(WidgetOf(&parent)), events);
}

POINT QtWindowPeers::CursorPlace() {
  const QPoint place = QCursor::pos();
  return {place.x(), place.y()};
}

RECT QtWindowPeers::WorkArea(POINT place) {
  const QScreen* at = QGuiApplication::screenAt({place.x, place.y});
  if (at == nullptr) at = QGuiApplication::primaryScreen();
  return WinRect(at->availableGeometry());
}

}  // namespace platform
