#include "platform/qt/qt_surface_widget.h"

#include <QChildEvent>
#include <QPointer>

namespace platform {

QtSurfaceWidget::QtSurfaceWidget(QWidget* parent, Qt::WindowFlags flags, WindowEvents& events)
    : QtPaintedWidget(parent, flags, events),
      bars_(*this,
            [this](int bar, UINT request, int position) {
              if (Events() != nullptr) Events()->OnScroll(bar, request, position);
            }),
      caret_(*this) {
  // The surface covers the whole widget.
  setAttribute(Qt::WA_OpaquePaintEvent);
}

void QtSurfaceWidget::Damage(const QRect& area) {
  surface_->Damage(area);
  update(area);
}

void QtSurfaceWidget::PaintNow() {
  if (!IsOnScreen()) return;
  Fit();
  const QRegion damaged = surface_->Damaged();
  if (damaged.isEmpty()) return;
  const QPointer<QtSurfaceWidget> self = this;
  PaintDamage();
  if (self == nullptr) return;
  // The toolkit does not repaint during a paint event.
  IsPaintingUnderWay() ? update(damaged) : repaint(damaged);
}

void QtSurfaceWidget::Draw(const std::function<void(Canvas&)>& work) {
  const bool isSeen = IsOnScreen();
  surface_->Draw(work, isSeen);
  if (!isSeen || std::exchange(isCopyDue_, true)) return;
  update();
}

void QtSurfaceWidget::SetScrollBar(int bar, const ScrollBarView& view) {
  bars_.Set(bar, view);
  if (isVisible()) Fit();
}

void QtSurfaceWidget::paintEvent(QPaintEvent* event) {
  isCopyDue_ = false;
  const PaintingUnderWay underWay;
  Fit();
  PaintDamage();
  QPainter painter(this);
  CopySurface(painter, event->region());
}

void QtSurfaceWidget::CopySurface(QPainter& painter, const QRegion& area) const {
  const QRect client({}, bars_.ClientSize());
  const QImage shown = surface_->View();
  const double ratio = shown.devicePixelRatio();
  for (const QRect& each : area& client) {
    painter.drawImage(QRectF(each), shown,
                      QRectF(QPointF(each.topLeft()) * ratio, QSizeF(each.size()) * ratio));
  }
  for (const QRect& each : area - client)
    painter.fillRect(each, palette().color(QPalette::Window));
  caret_.Paint(painter, shown);
}

void QtSurfaceWidget::PaintDamage() {
  if (Events() == nullptr || !IsOnScreen()) return;
  const auto surface = surface_;
  surface->Paint(*Events());
}

void QtSurfaceWidget::Fit() {
  surface_->Resize(bars_.ClientSize(), devicePixelRatioF(), palette().color(QPalette::Window));
}

void QtSurfaceWidget::resizeEvent(QResizeEvent* /*event*/) {
  bars_.Arrange();
  if (isVisible()) Fit();
}

void QtSurfaceWidget::showEvent(QShowEvent* event) {
  // Not when the window is restored from minimized.
  if (event->spontaneous()) return;
  Fit();
  surface_->Expose();
}

void QtSurfaceWidget::hideEvent(QHideEvent* event) {
  if (!event->spontaneous()) surface_->Drop();
}

void QtSurfaceWidget::childEvent(QChildEvent* event) {
  // The scroll bars stay above a new child.
  if (event->added() && event->child()->isWidgetType()) bars_.Arrange();
}

}  // namespace platform
