#include "platform/qt/qt_dialog_keys.h"

#include <QChildEvent>
#include <QVariant>

#include "platform/qt/qt_peer.h"

namespace platform {
namespace {

constexpr const char* kDialogProperty = "dialog";

std::optional<DialogKey> PlainKey(int key) {
  switch (key) {
    case Qt::Key_Tab:
      return DialogKey::kTab;
    case Qt::Key_Backtab:
      return DialogKey::kBackTab;
    case Qt::Key_Right:
    case Qt::Key_Down:
      return DialogKey::kForward;
    case Qt::Key_Left:
    case Qt::Key_Up:
      return DialogKey::kBackward;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return DialogKey::kEnter;
    case Qt::Key_Escape:
      return DialogKey::kEscape;
    default:
      return std::nullopt;
  }
}

std::optional<DialogKey> ControlKey(int key, bool shift) {
  switch (key) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
      return shift ? DialogKey::kPreviousPage : DialogKey::kNextPage;
    case Qt::Key_PageDown:
      return DialogKey::kNextPage;
    case Qt::Key_PageUp:
      return DialogKey::kPreviousPage;
    default:
      return std::nullopt;
  }
}

std::optional<DialogKey> DialogKeyOf(const QKeyEvent& event) {
  const auto modifiers = event.modifiers() & ~Qt::KeypadModifier;
  const bool shift = (modifiers & Qt::ShiftModifier) != 0;
  if ((modifiers & ~Qt::ShiftModifier) == Qt::ControlModifier)
    return ControlKey(event.key(), shift);
  if (event.key() == Qt::Key_Tab && modifiers == Qt::ShiftModifier) return DialogKey::kBackTab;
  const bool isBackTab = event.key() == Qt::Key_Backtab;
  return modifiers == Qt::NoModifier || isBackTab ? PlainKey(event.key()) : std::nullopt;
}

bool IsByUser(const QFocusEvent& event) {
  switch (event.reason()) {
    case Qt::MouseFocusReason:
    case Qt::TabFocusReason:
    case Qt::BacktabFocusReason:
    case Qt::ShortcutFocusReason:
      return true;
    default:
      return false;
  }
}

// The window of the widget, or of the nearest ancestor that has one.
HWND HandleOf(const QWidget* widget) {
  for (; widget != nullptr; widget = widget->parentWidget()) {
    const QVariant handle = widget->property(kHandleProperty);
    if (handle.isValid()) return reinterpret_cast<HWND>(handle.toULongLong());
  }
  return nullptr;
}

}  // namespace

bool IsInDialog(const QWidget& widget) {
  const QWidget* each = &widget;
  while (each != nullptr && !each->property(kDialogProperty).toBool())
    each = each->parentWidget();
  return each != nullptr;
}

QtDialogKeys::QtDialogKeys(QWidget& dialog, DialogEvents& events)
    : dialog_(dialog), events_(events) {
  dialog.setProperty(kDialogProperty, true);
  dialog.installEventFilter(this);
}

bool QtDialogKeys::eventFilter(QObject* watched, QEvent* event) {
  // In ChildAdded the child is not yet fully constructed, but an event filter can be installed on
  // it.
  if (event->type() == QEvent::ChildAdded) Watch(*static_cast<QChildEvent*>(event)->child());
  const auto* widget = qobject_cast<QWidget*>(watched);
  if (widget == nullptr || widget->window() != &dialog_) return false;
  if (event->type() == QEvent::FocusIn && IsByUser(*static_cast<QFocusEvent*>(event))) {
    events_.OnFocusMoved(HandleOf(widget));
  }
  if (event->type() != QEvent::KeyPress) return false;
  return OnKey(*widget, *static_cast<QKeyEvent*>(event));
}

void QtDialogKeys::Watch(QObject& child) {
  if (child.isWidgetType()) child.installEventFilter(this);
}

// A key that no widget accepts is sent again to each parent of the focus widget.
bool QtDialogKeys::OnKey(const QWidget& widget, const QKeyEvent& event) {
  const QWidget* focus = dialog_.focusWidget();
  if (focus != nullptr && &widget != focus) return false;
  const auto key = DialogKeyOf(event);
  return key.has_value() && events_.OnDialogKey(*key, HandleOf(&widget));
}

}  // namespace platform
