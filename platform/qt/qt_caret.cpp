#include "platform/qt/qt_caret.h"

#include "platform/user/window_peer.h"

namespace platform {

QtCaret::QtCaret(QWidget& window) : window_(window) {
  timer_.setInterval(kCaretBlinkMilliseconds);
  QObject::connect(&timer_, &QTimer::timeout, &window, [this] { Blink(); });
}

void QtCaret::Set(const std::optional<QRect>& bounds) {
  Update();
  bounds_ = bounds;
  isLit_ = bounds.has_value();
  Update();
  if (isLit_) {
    timer_.start();
  } else {
    timer_.stop();
  }
}

void QtCaret::Paint(QPainter& painter, const QImage& shown) const {
  if (!isLit_) return;
  const double ratio = shown.devicePixelRatio();
  const QRectF pixels(QPointF(bounds_->topLeft()) * ratio, QSizeF(bounds_->size()) * ratio);
  QImage inverted = shown.copy(pixels.toAlignedRect() & shown.rect());
  inverted.invertPixels();
  painter.drawImage(bounds_->topLeft(), inverted);
}

void QtCaret::Blink() {
  isLit_ = !isLit_;
  Update();
}

void QtCaret::Update() {
  if (bounds_.has_value()) window_.update(*bounds_);
}

}  // namespace platform
