#include "platform/qt/qt_surface.h"

#include <cmath>
#include <utility>

#include "platform/qt/qt_peer.h"
#include "platform/qt/qt_screen_bounds.h"

namespace platform {
namespace {

QImage MakeImage(QSize size, double ratio, const QColor& colour) {
  const QSizeF pixels = QSizeF(size.expandedTo({1, 1})) * ratio;
  QImage image(static_cast<int>(std::ceil(pixels.width())),
               static_cast<int>(std::ceil(pixels.height())), QImage::Format_RGB32);
  image.setDevicePixelRatio(ratio);
  image.fill(colour);
  return image;
}

void CopyTo(QImage& target, const QImage& source) {
  QPainter painter(&target);
  painter.setCompositionMode(QPainter::CompositionMode_Source);
  painter.drawImage(QPointF(), source);
}

}  // namespace

// Lifts the clipping to the painted area, or clips everything away, for its lifetime.
class QtSurface::Clipping {
 public:
  Clipping(QtSurface& surface, bool isSeen) : surface_(surface) {
    isSeen ? surface_.Unclip() : surface_.Clip({});
  }
  ~Clipping() { surface_.isPainting_ ? surface_.Clip(surface_.painted_) : surface_.Unclip(); }
  Clipping(const Clipping&) = delete;
  Clipping& operator=(const Clipping&) = delete;

 private:
  QtSurface& surface_;
};

void QtSurface::Resize(QSize wanted, double ratio, const QColor& colour) {
  // A larger window is never visible as a whole.
  const QSize size = wanted.boundedTo(LargestWindowSize());
  const bool hasRatio = !image_.isNull() && image_.devicePixelRatio() == ratio;
  if (hasRatio && Size() == size.expandedTo({1, 1})) return;
  QImage fresh = MakeImage(size, ratio, colour);
  QRegion added(QRect({}, size));
  if (hasRatio) {
    CopyTo(fresh, View());
    added -= QRect({}, Size());
  }
  if (painter_.isActive()) painter_.end();
  image_ = std::move(fresh);
  Start();
  Damage(added);
  isExposed_ = isExposed_ || !added.isEmpty();
}

void QtSurface::Drop() {
  damaged_ = {};
  if (isPainting_) return;
  if (painter_.isActive()) painter_.end();
  image_ = {};
}

void QtSurface::Expose() {
  Damage(QRect({}, Size()));
  isExposed_ = true;
}

QRegion QtSurface::Damaged() const {
  return damaged_ & QRect({}, Size());
}

void QtSurface::Paint(WindowEvents& events) {
  if (isPainting_) return;
  const QRegion damaged = Damaged();
  damaged_ = {};
  if (damaged.isEmpty()) return;
  isPainting_ = true;
  painted_ = damaged;
  Clip(damaged);
  events.OnPaint(canvas_, WinRect(damaged.boundingRect()), std::exchange(isExposed_, false));
  isPainting_ = false;
  Unclip();
}

void QtSurface::Draw(const std::function<void(Canvas&)>& work, bool isSeen) {
  if (image_.isNull()) image_ = MakeImage({}, 1, Qt::black);
  if (!painter_.isActive()) Start();
  if (isSeen && !isPainting_) {
    work(canvas_);
    return;
  }
  const Clipping clipping(*this, isSeen);
  work(canvas_);
}

QImage QtSurface::View() const {
  QImage view(image_.constBits(), image_.width(), image_.height(), image_.bytesPerLine(),
              image_.format());
  view.setDevicePixelRatio(image_.devicePixelRatio());
  return view;
}

void QtSurface::Start() {
  painter_.begin(&image_);
  isPainting_ ? Clip(painted_) : Unclip();
}

void QtSurface::Clip(const QRegion& area) {
  painter_.setClipRegion(area);
}

void QtSurface::Unclip() {
  // After setClipping(false), a painter accepts only regions of one rectangle, so clipping stays
  // on.
  painter_.setClipRect(QRect({}, Size() + QSize(1, 1)));
}

}  // namespace platform
