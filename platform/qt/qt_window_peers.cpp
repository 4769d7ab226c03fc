#include "platform/qt/qt_window_peers.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

#include "platform/qt/qt_input.h"
#include "platform/qt/qt_painted_widget.h"
#include "platform/qt/qt_peer.h"
#include "platform/qt/qt_surface_widget.h"

namespace platform {
namespace {

class QtSurfacePeer final : public QtPeer<WindowPeer> {
 public:
  QtSurfacePeer(QWidget* parent, Qt::WindowFlags flags, WindowEvents& events)
      : QtPeer(new QtSurfaceWidget(parent, flags, events), events), input_(Widget(), events) {}
  ~QtSurfacePeer() override {
    if (Widget() != nullptr) Surface().Forget();
  }
  QtSurfacePeer(const QtSurfacePeer&) = delete;
  QtSurfacePeer& operator=(const QtSurfacePeer&) = delete;

  void SetPointer(PointerShape shape) override { input_.SetPointer(shape); }
  void Invalidate(const RECT& area) override { Surface().Damage(QtRect(area)); }
  void PaintNow() override { Surface().PaintNow(); }
  bool Draw(const std::function<void(Canvas&)>& work) override {
    Surface().Draw(work);
    return true;
  }
  void SetScrollBar(int bar, const ScrollBarView& view) override {
    Surface().SetScrollBar(bar, view);
  }
  void SetCaret(const std::optional<RECT>& bounds) override {
    Surface().SetCaret(bounds.has_value() ? std::optional(QtRect(*bounds)) : std::nullopt);
  }

 private:
  QtSurfaceWidget& Surface() const { return *static_cast<QtSurfaceWidget*>(Widget()); }

  QtInput input_;
};

class QtPagePeer final : public QtPeer<WindowPeer> {
 public:
  QtPagePeer(QWidget* parent, WindowEvents& events)
      : QtPeer(new QtPaintedWidget(parent, Qt::Widget, events), events) {}
  ~QtPagePeer() override {
    if (Widget() != nullptr) static_cast<QtPaintedWidget*>(Widget())->Forget();
  }
  QtPagePeer(const QtPagePeer&) = delete;
  QtPagePeer& operator=(const QtPagePeer&) = delete;
};

}  // namespace

std::unique_ptr<WindowPeer> QtWindowPeers::MakeTopLevel(WindowEvents& events, WindowPeer* owner) {
  return std::make_unique<QtSurfacePeer>(WidgetOf(owner), Qt::Window, events);
}

std::unique_ptr<WindowPeer> QtWindowPeers::MakeChild(WindowEvents& events, WindowPeer& parent) {
  return std::make_unique<QtSurfacePeer>(WidgetOf(&parent), Qt::Widget, events);
}

std::unique_ptr<WindowPeer> QtWindowPeers::MakePage(WindowEvents& events, WindowPeer& parent) {
  return std::make_unique<QtPagePeer>(WidgetOf(&parent), events);
}

POINT QtWindowPeers::CursorPosition() {
  const QPoint position = QCursor::pos();
  return {position.x(), position.y()};
}

SIZE QtWindowPeers::ScreenSize() {
  const QSize size = QGuiApplication::primaryScreen()->geometry().size();
  return {size.width(), size.height()};
}

RECT QtWindowPeers::WorkArea(POINT position) {
  const QScreen* at = QGuiApplication::screenAt({position.x, position.y});
  if (at == nullptr) at = QGuiApplication::primaryScreen();
  return WinRect(at->availableGeometry());
}

}  // namespace platform
