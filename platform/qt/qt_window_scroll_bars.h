// The scroll bars of a window, at the right and at the bottom of its widget, with a corner between
// them. What the user does with them is reported; they stay where they are until they are told
// otherwise, but for the thumb while it is dragged. Used on the window thread.
#pragma once

#include <QWidget>
#include <functional>
#include <memory>

#include "platform/user/window_peer.h"

namespace platform {

class QtWindowScrollBar;

class QtWindowScrollBars {
 public:
  // The bar, the request and the place, as WindowEvents::OnScroll has them.
  using Report = std::function<void(int bar, UINT request, int place)>;

  QtWindowScrollBars(QWidget& window, Report report)
      : window_(window), report_(std::move(report)) {}

  void Set(int bar, const ScrollBarView& view);
  // Puts them where they belong, above all other children.
  void Arrange();
  // What they leave of the window.
  QSize ClientSize() const;

 private:
  QtWindowScrollBar*& BarOf(int bar) { return bar == SB_VERT ? vertical_ : horizontal_; }
  QSize Taken() const;
  void MakeCorner();

  QWidget& window_;
  Report report_;
  // Owned by the window's widget; null as long as they have never been shown.
  QtWindowScrollBar* horizontal_ = nullptr;
  QtWindowScrollBar* vertical_ = nullptr;
  QWidget* corner_ = nullptr;
};

}  // namespace platform
