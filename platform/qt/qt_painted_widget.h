// The widget of a window that paints itself in WM_PAINT. This class, used for dialogs and pages,
// keeps no copy of what it shows: whatever area the toolkit requests is painted. The peer calls
// Forget when the window is destroyed; the widget lives on until it is retired.
#pragma once

#include <QPaintEvent>
#include <QPainter>
#include <QWidget>

#include "platform/qt/qt_canvas.h"
#include "platform/qt/qt_peer.h"

namespace platform {

class QtPaintedWidget : public QWidget {
 public:
  QtPaintedWidget(QWidget* parent, Qt::WindowFlags flags, WindowEvents& events)
      : QWidget(parent, flags), events_(&events) {}

  // The window is destroyed.
  void Forget() { events_ = nullptr; }

 protected:
  // Null once the window is destroyed.
  WindowEvents* Events() const { return events_; }

  // True during a paint event of any such widget.
  static bool IsPaintingUnderWay() { return paintEvents_ > 0; }
  class PaintingUnderWay {
   public:
    PaintingUnderWay() { ++paintEvents_; }
    ~PaintingUnderWay() { --paintEvents_; }
    PaintingUnderWay(const PaintingUnderWay&) = delete;
    PaintingUnderWay& operator=(const PaintingUnderWay&) = delete;
  };

  void paintEvent(QPaintEvent* event) override {
    if (events_ == nullptr) return;
    const PaintingUnderWay underWay;
    QPainter painter(this);
    QtCanvas canvas(painter);
    events_->OnPaint(canvas, WinRect(event->rect()), true);
  }

 private:
  static inline int paintEvents_ = 0;

  WindowEvents* events_;
};

}  // namespace platform
