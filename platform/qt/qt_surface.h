// The contents of a window as an image that persists between its paint messages, and the invalid
// part of it. The widget copies the image to the screen. Lengths are device-independent pixels; the
// image has the screen's resolution. Shared by the widget and the code that paints, since a window
// procedure may destroy its window while it paints. Used on the window thread.
#pragma once

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QRegion>
#include <functional>

#include "platform/qt/qt_canvas.h"
#include "platform/user/window_peer.h"

namespace platform {

class QtSurface {
 public:
  QtSurface() : canvas_(painter_, &image_) {}
  QtSurface(const QtSurface&) = delete;
  QtSurface& operator=(const QtSurface&) = delete;

  // Keeps the present contents. A new part is filled with the colour, and is damaged and exposed.
  // When the ratio changes everything is new. The surface is limited to the size of the largest
  // window.
  void Resize(QSize wanted, double ratio, const QColor& colour);
  // Frees the pixels.
  void Drop();
  void Damage(const QRegion& area) { damaged_ += area; }
  // Marks everything as damaged and exposed.
  void Expose();
  // The damage within the surface.
  QRegion Damaged() const;

  // Lets the window paint the damage and clears it. Has no effect without damage and while the
  // window is painting.
  void Paint(WindowEvents& events);
  // Draws anywhere on the surface, even while the window paints. Unless isSeen, the drawing is
  // clipped away.
  void Draw(const std::function<void(Canvas&)>& work, bool isSeen);

  // The pixels without a copy. Valid until the next call on the surface.
  QImage View() const;

 private:
  class Clipping;

  void Start();
  QSize Size() const { return image_.deviceIndependentSize().toSize(); }
  void Clip(const QRegion& area);
  void Unclip();

  // The painter is active as long as there is an image, because QPainter::begin is slow.
  QImage image_;
  QPainter painter_;
  QtCanvas canvas_;
  QRegion damaged_;
  bool isExposed_ = false;
  // Whether a paint message is in progress, and the area it paints.
  bool isPainting_ = false;
  QRegion painted_;
};

}  // namespace platform
