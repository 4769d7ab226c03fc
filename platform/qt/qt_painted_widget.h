// The widget of a window that paints itself in WM_PAINT. This one, of dialogs, keeps nothing of
// what it shows: whatever the toolkit asks for is painted. Its peer tells it when there is no
// window any more; the widget lives on until it is retired.
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

  // There is no window any more.
  void Forget() { events_ = nullptr; }

 protected:
  // Null when there is no window any more.
  WindowEvents* Events() const { return events_; }

  // Inside of a paint event of any such widget.
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
