#include "platform/qt/qt_key_state.h"

#include <QGuiApplication>

#include "platform/qt/qt_virtual_keys.h"

namespace platform {

void QtKeyState::Note(const QEvent& event) {
  switch (event.type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
      NoteKey(static_cast<const QKeyEvent&>(event));
      break;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
      NoteMouse(static_cast<const QMouseEvent&>(event));
      break;
    case QEvent::ApplicationStateChange:
      // Keys released while another process has the focus are not reported.
      if (QGuiApplication::applicationState() != Qt::ApplicationActive) down_.reset();
      break;
    default:
      break;
  }
}

void QtKeyState::NoteKey(const QKeyEvent& event) {
  NoteModifiers(event.modifiers());
  const int code = VirtualKeyOf(event).code;
  // Qt reports a release before each repetition of a key.
  const bool isDown = event.type() == QEvent::KeyPress || event.isAutoRepeat();
  if (code != 0) down_.set(static_cast<std::size_t>(code), isDown);
}

void QtKeyState::NoteMouse(const QMouseEvent& event) {
  NoteModifiers(event.modifiers());
  down_.set(VK_LBUTTON, (event.buttons() & Qt::LeftButton) != 0);
  down_.set(VK_RBUTTON, (event.buttons() & Qt::RightButton) != 0);
  down_.set(VK_MBUTTON, (event.buttons() & Qt::MiddleButton) != 0);
}

void QtKeyState::NoteModifiers(Qt::KeyboardModifiers modifiers) {
  down_.set(VK_SHIFT, (modifiers & Qt::ShiftModifier) != 0);
  down_.set(VK_CONTROL, (modifiers & Qt::ControlModifier) != 0);
  down_.set(VK_MENU, (modifiers & Qt::AltModifier) != 0);
}

}  // namespace platform
