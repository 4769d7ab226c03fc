// The widget of a window that keeps its contents: top-level windows and children of registered
// classes. Its paint event copies the surface; the window paints only the parts that were
// invalidated or are new.
#pragma once

#include <memory>

#include "platform/qt/qt_caret.h"
#include "platform/qt/qt_painted_widget.h"
#include "platform/qt/qt_surface.h"
#include "platform/qt/qt_window_scroll_bars.h"

namespace platform {

class QtSurfaceWidget final : public QtPaintedWidget {
 public:
  QtSurfaceWidget(QWidget* parent, Qt::WindowFlags flags, WindowEvents& events);

  void Damage(const QRect& area);
  // Lets the window paint the damage at once if it is on the screen.
  void PaintNow();
  void Draw(const std::function<void(Canvas&)>& work);
  void SetScrollBar(int bar, const ScrollBarView& view);
  void SetCaret(const std::optional<QRect>& bounds) { caret_.Set(bounds); }

 private:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void childEvent(QChildEvent* event) override;

  bool IsOnScreen() const { return isVisible() && !window()->isMinimized(); }
  // Resizes the surface to the client area and to the screen's resolution.
  void Fit();
  void PaintDamage();
  void CopySurface(QPainter& painter, const QRegion& area) const;

  std::shared_ptr<QtSurface> surface_ = std::make_shared<QtSurface>();
  QtWindowScrollBars bars_;
  QtCaret caret_;
  // Something was drawn on the surface and not yet copied to the screen.
  bool isCopyDue_ = false;
};

}  // namespace platform
