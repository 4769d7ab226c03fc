#include "platform/qt/qt_window_scroll_bar.h"

#include <QMouseEvent>
#include <QStyleOptionSlider>
#include <algorithm>

namespace platform {

QtWindowScrollBar::QtWindowScrollBar(QWidget& window, Qt::Orientation orientation, Report report)
    : QScrollBar(orientation, &window), report_(std::move(report)) {
  setFocusPolicy(Qt::NoFocus);
  setContextMenuPolicy(Qt::PreventContextMenu);
  setCursor(Qt::ArrowCursor);
  // The window does not receive mouse events on its scroll bars.
  setAttribute(Qt::WA_NoMousePropagation);
  setTracking(false);
  connect(this, &QScrollBar::actionTriggered, [this](int action) { OnAction(action); });
  connect(this, &QScrollBar::sliderMoved,
          [this](int position) { report_(SB_THUMBTRACK, position); });
  connect(this, &QScrollBar::sliderReleased, [this] { OnReleased(); });
}

void QtWindowScrollBar::Set(const ScrollBarView& view) {
  if (isSliderDown()) {
    pending_ = view;
  } else {
    Apply(view);
  }
}

void QtWindowScrollBar::Apply(const ScrollBarView& view) {
  const int last = view.maximum - std::max(view.page - 1, 0);
  setRange(view.minimum, std::max(last, view.minimum));
  setPageStep(std::max(view.page, 1));
  setValue(view.position);
}

void QtWindowScrollBar::OnAction(int action) {
  struct Request {
    UINT request;
    QStyle::SubControl part;
  };
  const auto report = [&](Request made) {
    if (!isPressed_ || IsMouseOn(made.part)) report_(made.request, 0);
  };
  switch (action) {
    case SliderSingleStepAdd:
      report({SB_LINEDOWN, QStyle::SC_ScrollBarAddLine});
      break;
    case SliderSingleStepSub:
      report({SB_LINEUP, QStyle::SC_ScrollBarSubLine});
      break;
    case SliderPageStepAdd:
      report({SB_PAGEDOWN, QStyle::SC_ScrollBarAddPage});
      break;
    case SliderPageStepSub:
      report({SB_PAGEUP, QStyle::SC_ScrollBarSubPage});
      break;
    case SliderToMinimum:
      report_(SB_TOP, 0);
      break;
    case SliderToMaximum:
      report_(SB_BOTTOM, 0);
      break;
    default:
      return;
  }
  // The receiver of the report moves the thumb.
  setSliderPosition(value());
}

void QtWindowScrollBar::OnReleased() {
  report_(SB_THUMBPOSITION, sliderPosition());
  if (pending_.has_value()) Apply(*std::exchange(pending_, std::nullopt));
  setSliderPosition(value());
}

void QtWindowScrollBar::mousePressEvent(QMouseEvent* event) {
  isPressed_ = isPressed_ || event->button() == Qt::LeftButton;
  mouse_ = event->position().toPoint();
  QScrollBar::mousePressEvent(event);
}

void QtWindowScrollBar::mouseMoveEvent(QMouseEvent* event) {
  mouse_ = event->position().toPoint();
  QScrollBar::mouseMoveEvent(event);
}

void QtWindowScrollBar::mouseReleaseEvent(QMouseEvent* event) {
  QScrollBar::mouseReleaseEvent(event);
  if (event->button() != Qt::LeftButton || !std::exchange(isPressed_, false)) return;
  report_(SB_ENDSCROLL, 0);
}

void QtWindowScrollBar::wheelEvent(QWheelEvent* event) {
  event->accept();
}

bool QtWindowScrollBar::IsMouseOn(QStyle::SubControl part) const {
  QStyleOptionSlider option;
  initStyleOption(&option);
  return style()->hitTestComplexControl(QStyle::CC_ScrollBar, &option, mouse_, this) == part;
}

}  // namespace platform
