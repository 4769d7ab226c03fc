#include "platform/desktop/qt_window_peers.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

#include "platform/desktop/qt_input.h"
#include "platform/desktop/qt_painted_widget.h"
#include "platform/desktop/qt_peer.h"

namespace platform {
namespace {

class QtPlainPeer final : public QtPeer<WindowPeer> {
 public:
  QtPlainPeer(QWidget* parent, Qt::WindowFlags flags, WindowEvents& events)
      : QtPeer(new QtPaintedWidget(parent, flags, events), events), input_(Widget(), events) {}
  ~QtPlainPeer() override {
    if (Widget() != nullptr) static_cast<QtPaintedWidget*>(Widget())->Forget();
  }
  QtPlainPeer(const QtPlainPeer&) = delete;
  QtPlainPeer& operator=(const QtPlainPeer&) = delete;

  void SetPointer(PointerShape shape) override { input_.SetPointer(shape); }

 private:
  QtInput input_;
};

}  // namespace

std::unique_ptr<WindowPeer> QtWindowPeers::MakeTopLevel(WindowEvents& events, WindowPeer* owner) {
  return std::make_unique<QtPlainPeer>(WidgetOf(owner), Qt::Window, events);
}

std::unique_ptr<WindowPeer> QtWindowPeers::MakeChild(WindowEvents& events, WindowPeer& parent) {
  return std::make_unique<QtPlainPeer>(WidgetOf(&parent), Qt::Widget, events);
}

std::unique_ptr<WindowPeer> QtWindowPeers::MakePage(WindowEvents& events, WindowPeer& parent) {
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
