#include "platform/desktop/qt_dialog_keys.h"

#include <QApplication>

#include "platform/desktop/qt_peer.h"

namespace platform {
namespace {

bool IsInput(QEvent::Type type) {
  switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
      return true;
    default:
      return false;
  }
}

// An event that is not accepted closes no window.
bool IsKeptAway(QEvent& event) {
  if (event.type() == QEvent::Close) event.ignore();
  return event.type() == QEvent::Close || IsInput(event.type());
}

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

// The window of the widget, or of the one it is a part of.
HWND HandleOf(const QWidget* widget) {
  for (; widget != nullptr; widget = widget->parentWidget()) {
    const QVariant handle = widget->property(kHandleProperty);
    if (handle.isValid()) return reinterpret_cast<HWND>(handle.toULongLong());
  }
  return nullptr;
}

}  // namespace

QtDialogKeys::QtDialogKeys(QWidget& dialog, DialogEvents& events)
    : dialog_(dialog), events_(events) {
  QCoreApplication::instance()->installEventFilter(this);
}

bool QtDialogKeys::eventFilter(QObject* watched, QEvent* event) {
  const auto* widget = qobject_cast<QWidget*>(watched);
  if (widget == nullptr || widget->window() != &dialog_) return false;
  if (blocked_) return IsKeptAway(*event);
  if (event->type() == QEvent::FocusIn) events_.OnFocusMoved(HandleOf(widget));
  if (event->type() != QEvent::KeyPress) return false;
  return OnKey(*widget, *static_cast<QKeyEvent*>(event));
}

// A key that nobody wanted comes once more for each widget around the one it was for.
bool QtDialogKeys::OnKey(const QWidget& widget, const QKeyEvent& event) {
  const QWidget* focus = dialog_.focusWidget();
  if (focus != nullptr && &widget != focus) return false;
  const auto key = DialogKeyOf(event);
  return key.has_value() && events_.OnDialogKey(*key, HandleOf(&widget));
}

}  // namespace platform
