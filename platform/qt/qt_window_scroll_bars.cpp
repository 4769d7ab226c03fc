#include "platform/qt/qt_window_scroll_bars.h"

#include "platform/qt/qt_window_scroll_bar.h"

namespace platform {
namespace {

bool IsShown(const QWidget* bar) {
  return bar != nullptr && !bar->isHidden();
}

}  // namespace

void QtWindowScrollBars::Set(int bar, const ScrollBarView& view) {
  QtWindowScrollBar*& widget = BarOf(bar);
  if (widget == nullptr) {
    if (!view.isShown) return;
    const auto orientation = bar == SB_VERT ? Qt::Vertical : Qt::Horizontal;
    widget = new QtWindowScrollBar(window_, orientation, [this, bar](UINT request, int position) {
      report_(bar, request, position);
    });
  }
  widget->Set(view);
  widget->setVisible(view.isShown);
  Arrange();
}

void QtWindowScrollBars::Arrange() {
  const QSize client = ClientSize();
  const QSize taken = Taken();
  if (vertical_ != nullptr) {
    vertical_->setGeometry(client.width(), 0, taken.width(), client.height());
    vertical_->raise();
  }
  if (horizontal_ != nullptr) {
    horizontal_->setGeometry(0, client.height(), client.width(), taken.height());
    horizontal_->raise();
  }
  const bool meet = IsShown(vertical_) && IsShown(horizontal_);
  if (meet && corner_ == nullptr) MakeCorner();
  if (corner_ == nullptr) return;
  corner_->setGeometry(QRect(QPoint(client.width(), client.height()), taken));
  corner_->setVisible(meet);
  corner_->raise();
}

// The window arranges its bars when a child is added, so corner_ is set before the corner becomes
// one.
void QtWindowScrollBars::MakeCorner() {
  corner_ = new QWidget;
  corner_->setAutoFillBackground(true);
  corner_->setCursor(Qt::ArrowCursor);
  corner_->setAttribute(Qt::WA_NoMousePropagation);
  corner_->setParent(&window_);
}

QSize QtWindowScrollBars::ClientSize() const {
  return (window_.size() - Taken()).expandedTo({0, 0});
}

QSize QtWindowScrollBars::Taken() const {
  return {IsShown(vertical_) ? kScrollBarThickness : 0,
          IsShown(horizontal_) ? kScrollBarThickness : 0};
}

}  // namespace platform
