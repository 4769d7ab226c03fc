#include "platform/qt/qt_input.h"

#include <QApplication>
#include <QHash>
#include <cmath>

#include "platform/qt/qt_desktop_loss.h"
#include "platform/qt/qt_virtual_keys.h"

namespace platform {
namespace {

// The events of each widget that reports.
QHash<const QWidget*, WindowEvents*>& Reporters() {
  static auto& reporters = *new QHash<const QWidget*, WindowEvents*>;
  return reporters;
}

// Rounded down: a pointer anywhere in a pixel is in that pixel.
QPoint PixelOf(const QPointF& place) {
  return {static_cast<int>(std::floor(place.x())), static_cast<int>(std::floor(place.y()))};
}

QWidget* WidgetUnder(QWidget& told, const QPoint& place) {
  if (!told.rect().contains(place)) return QApplication::widgetAt(told.mapToGlobal(place));
  QWidget* child = told.childAt(place);
  return child != nullptr ? child : &told;
}

// Who hears of the mouse at that place of the told widget: a window there that paints itself, or
// one around a disabled control there. Null: nobody.
QWidget* ReporterAt(QWidget& told, const QPoint& place) {
  QWidget* under = WidgetUnder(told, place);
  while (under != nullptr && !Reporters().contains(under) && !under->isEnabled())
    under = under->isWindow() ? nullptr : under->parentWidget();
  return Reporters().contains(under) ? under : nullptr;
}

UINT ButtonDownMessage(Qt::MouseButton button) {
  switch (button) {
    case Qt::LeftButton:
      return WM_LBUTTONDOWN;
    case Qt::RightButton:
      return WM_RBUTTONDOWN;
    case Qt::MiddleButton:
      return WM_MBUTTONDOWN;
    default:
      return WM_NULL;
  }
}

UINT MessageOf(const QMouseEvent& event) {
  if (event.type() == QEvent::MouseMove) return WM_MOUSEMOVE;
  const UINT down = ButtonDownMessage(event.button());
  if (down == WM_NULL || event.type() == QEvent::MouseButtonPress) return down;
  // The messages of each button come in that order.
  return event.type() == QEvent::MouseButtonRelease ? down + 1 : down + 2;
}

Qt::CursorShape CursorOf(PointerShape shape) {
  switch (shape) {
    case PointerShape::kNone:
      return Qt::BlankCursor;
    case PointerShape::kText:
      return Qt::IBeamCursor;
    case PointerShape::kWait:
      return Qt::WaitCursor;
    case PointerShape::kCross:
      return Qt::CrossCursor;
    case PointerShape::kSizeWestEast:
      return Qt::SizeHorCursor;
    case PointerShape::kSizeNorthSouth:
      return Qt::SizeVerCursor;
    case PointerShape::kHand:
      return Qt::PointingHandCursor;
    case PointerShape::kArrow:
      break;
  }
  return Qt::ArrowCursor;
}

}  // namespace

QtInput::QtInput(QWidget* widget, WindowEvents& events) : widget_(widget), events_(events) {
  Reporters().insert(widget, &events);
  widget->setMouseTracking(true);
  widget->installEventFilter(this);
}

QtInput::~QtInput() {
  Reporters().removeIf([this](const auto& each) { return each.value() == &events_; });
}

void QtInput::SetPointer(PointerShape shape) {
  if (widget_ == nullptr || pointer_ == shape) return;
  pointer_ = shape;
  SurvivesUse([&] { widget_->setCursor(CursorOf(shape)); });
}

bool QtInput::eventFilter(QObject* /*watched*/, QEvent* event) {
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
      OnMouse(*static_cast<QMouseEvent*>(event));
      event->accept();
      return true;
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
      return OnKey(*static_cast<QKeyEvent*>(event));
    default:
      return false;
  }
}

void QtInput::OnMouse(const QMouseEvent& event) {
  const UINT message = MessageOf(event);
  const QPoint place = PixelOf(event.position());
  QWidget* reporter = ReporterAt(*widget_, place);
  if (reporter == nullptr || message == WM_NULL) return;
  if (event.type() == QEvent::MouseButtonPress && !reporter->isActiveWindow())
    reporter->activateWindow();
  const QPoint inside = reporter->mapFromGlobal(widget_->mapToGlobal(place));
  Reporters().value(reporter)->OnMouse({message, {inside.x(), inside.y()}});
}

bool QtInput::OnKey(QKeyEvent& event) {
  // A key that nobody wanted comes once more for each widget around the one it was for.
  const QWidget* focus = widget_->window()->focusWidget();
  if (focus != nullptr && focus != widget_) return false;
  const bool isDown = event.type() == QEvent::KeyPress;
  const VirtualKey key = VirtualKeyOf(event);
  if (key.code == 0) return false;
  // A key that repeats itself is told as going up in between.
  const bool isNews = isDown || !event.isAutoRepeat();
  if (isNews && !events_.OnKey({key.code, key.scanCode, isDown, event.isAutoRepeat(),
                                event.text().toStdWString()}))
    return false;
  event.accept();
  return true;
}

}  // namespace platform
