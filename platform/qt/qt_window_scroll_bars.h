// The scroll bars of a window, at the right and at the bottom of its widget, with a corner between
// them. User actions are reported and do not move the thumb, except while it is dragged: the owner
// sets its position. Used on the window thread.
#pragma once

#include <QWidget>
#include <functional>
#include <memory>

#include "platform/user/window_peer.h"

namespace platform {

class QtWindowScrollBar;

class QtWindowScrollBars {
 public:
  // The bar, the request and the position, as in WindowEvents::OnScroll.
  using Report = std::function<void(int bar, UINT request, int position)>;

  QtWindowScrollBars(QWidget& window, Report report)
      : window_(window), report_(std::move(report)) {}

  void Set(int bar, const ScrollBarView& view);
  // Positions the bars, above all other children.
  void Arrange();
  // The window's size without the bars.
  QSize ClientSize() const;

 private:
  QtWindowScrollBar*& BarOf(int bar) { return bar == SB_VERT ? vertical_ : horizontal_; }
  QSize Taken() const;
  void MakeCorner();

  QWidget& window_;
  Report report_;
  // Owned by the window's widget; null until first shown.
  QtWindowScrollBar* horizontal_ = nullptr;
  QtWindowScrollBar* vertical_ = nullptr;
  QWidget* corner_ = nullptr;
};

}  // namespace platform
