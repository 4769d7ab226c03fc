// What a window shows, in an image that stays between its paintings, and what of it is damaged. The
// widget copies it to the screen. Lengths are device-independent pixels; the image is as fine as
// the screen. Held by the widget and by whoever paints, since a procedure may end its window while
// it paints it. Used on the window thread.
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

  // What stands already stays; what is new has that colour, is damaged and exposed. With another
  // ratio everything is new. The surface is no larger than the largest window.
  void Resize(QSize wanted, double ratio, const QColor& colour);
  // The pixels are of no use any more, and need no memory.
  void Drop();
  void Damage(const QRegion& area) { damaged_ += area; }
  // Damages everything, as lost.
  void Expose();
  // Inside of the surface.
  QRegion Damaged() const;

  // Lets the window paint what is damaged, which it then no longer is. Nothing without damage and
  // while it paints already.
  void Paint(WindowEvents& events);
  // Draws anywhere, also while the window paints; unseen: on nothing.
  void Draw(const std::function<void(Canvas&)>& work, bool isSeen);

  // The pixels as they are, for as long as nothing else is done here.
  QImage View() const;

 private:
  class Clipping;

  void Start();
  QSize Size() const { return image_.deviceIndependentSize().toSize(); }
  void Clip(const QRegion& area);
  void Unclip();

  // The painter is active as long as there is an image, since beginning takes its time.
  QImage image_;
  QPainter painter_;
  QtCanvas canvas_;
  QRegion damaged_;
  bool isExposed_ = false;
  // Under way, and its damage.
  bool isPainting_ = false;
  QRegion painted_;
};

}  // namespace platform
