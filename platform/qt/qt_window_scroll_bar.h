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
  using Report = std::function<void(UINT request, int place)>;

  QtWindowScrollBar(QWidget& window, Qt::Orientation orientation, Report report);

  // While the user drags the thumb, it is shown once that is over.
  void Set(const ScrollBarView& view);

 private:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

  void Apply(const ScrollBarView& view);
  void OnAction(int action);
  void OnReleased();
  // Paging goes on until the thumb has come to where the mouse is.
  bool IsMouseOn(QStyle::SubControl part) const;

  Report report_;
  std::optional<ScrollBarView> later_;
  bool isPressed_ = false;
  QPoint mouse_;
};

}  // namespace platform
