// One scroll bar of a window, as a widget. Used on the window thread.
#pragma once

#include <QScrollBar>
#include <QStyle>
#include <functional>
#include <optional>

#include "platform/user/window_peer.h"

namespace platform {

class QtWindowScrollBar final : public QScrollBar {
 public:
  using Report = std::function<void(UINT request, int position)>;

  QtWindowScrollBar(QWidget& window, Qt::Orientation orientation, Report report);

  // While the user drags the thumb, the view is kept and applied when dragging ends.
  void Set(const ScrollBarView& view);

 private:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

  void Apply(const ScrollBarView& view);
  void OnAction(int action);
  void OnReleased();
  // Whether the mouse is on that part; paging goes on until the thumb has reached the mouse.
  bool IsMouseOn(QStyle::SubControl part) const;

  Report report_;
  std::optional<ScrollBarView> pending_;
  bool isPressed_ = false;
  QPoint mouse_;
};

}  // namespace platform
