#include "platform/qt/qt_input.h"

#include <QApplication>
#include <QHash>
#include <cmath>

#include "platform/qt/qt_desktop_loss.h"
#include "platform/qt/qt_virtual_keys.h"

namespace platform {
namespace {

// The WindowEvents of each widget that reports mouse events.
QHash<const QWidget*, WindowEvents*>& Reporters() {
  static auto& reporters = *new QHash<const QWidget*, WindowEvents*>;
  return reporters;
}

// Rounds down: a pointer anywhere in a pixel is in that pixel.
QPoint PixelOf(const QPointF& position) {
  return {static_cast<int>(std::floor(position.x())), static_cast<int>(std::floor(position.y()))};
}

QWidget* WidgetUnder(QWidget& receiver, const QPoint& position) {
  if (!receiver.rect().contains(position))
    return QApplication::widgetAt(receiver.mapToGlobal(position));
  QWidget* child = receiver.childAt(position);
  return child != nullptr ? child : &receiver;
}

// Returns the widget that reports the mouse at that position of the receiver: the window there that
// paints itself, or the one around a disabled control there. Null: none.
QWidget* ReporterAt(QWidget& receiver, const QPoint& position) {
  QWidget* under = WidgetUnder(receiver, position);
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
  // WM_xBUTTONDOWN, WM_xBUTTONUP and WM_xBUTTONDBLCLK have consecutive numbers.
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

bool ReportKey(const QKeyEvent& event, WindowEvents& events) {
  const bool isDown = event.type() == QEvent::KeyPress;
  const VirtualKey key = VirtualKeyOf(event);
  if (key.code == 0) return false;
  // Qt reports a release before each repetition of a key.
  const bool isReported = isDown || !event.isAutoRepeat();
  return !isReported || events.OnKey({key.code, key.scanCode, isDown, event.isAutoRepeat(),
                                      event.text().toStdWString()});
}

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
  const QPoint position = PixelOf(event.position());
  QWidget* reporter = ReporterAt(*widget_, position);
  if (reporter == nullptr || message == WM_NULL) return;
  if (event.type() == QEvent::MouseButtonPress && !reporter->isActiveWindow())
    reporter->activateWindow();
  const QPoint inside = reporter->mapFromGlobal(widget_->mapToGlobal(position));
  Reporters().value(reporter)->OnMouse({message, {inside.x(), inside.y()}});
}

bool QtInput::OnKey(QKeyEvent& event) {
  // A key that no widget accepts is sent again to each parent of the focus widget.
  const QWidget* focus = widget_->window()->focusWidget();
  if (focus != nullptr && focus != widget_) return false;
  if (!ReportKey(event, events_)) return false;
  event.accept();
  return true;
}

}  // namespace platform
