// The widget of a window that paints itself in WM_PAINT: plain windows and dialogs. Its peer tells
// it when there is no window any more; the widget lives on until it is retired.
#pragma once

#include <QPaintEvent>
#include <QPainter>
#include <QWidget>

#include "platform/desktop/qt_canvas.h"
#include "platform/desktop/qt_peer.h"

namespace platform {

class QtPaintedWidget final : public QWidget {
 public:
  QtPaintedWidget(QWidget* parent, Qt::WindowFlags flags, WindowEvents& events)
      : QWidget(parent, flags), events_(&events) {}

  // There is no window any more.
  void Forget() { events_ = nullptr; }

 private:
  void paintEvent(QPaintEvent* event) override {
    if (events_ == nullptr) return;
    QPainter painter(this);
    QtCanvas canvas(painter);
    events_->OnPaint(canvas, WinRect(event->rect()), true);
  }

  WindowEvents* events_;
};

}  // namespace platform
