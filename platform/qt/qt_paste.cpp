#include "platform/qt/qt_paste.h"

#include <QAbstractSpinBox>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPointer>
#include <algorithm>

#include "platform/qt/qt_selection.h"

namespace platform {
namespace {

// The limit of one paste into a field without a limit of its own.
constexpr qsizetype kMostCharacters = 65'536;

bool IsOfSelection(const QKeyEvent& event) {
  return event.key() == Qt::Key_Insert &&
         event.modifiers() == (Qt::ControlModifier | Qt::ShiftModifier);
}

}  // namespace

QtPaste::QtPaste(QLineEdit& field) : QObject(&field), field_(field) {
  field.installEventFilter(this);
  auto* box = qobject_cast<QAbstractSpinBox*>(field.parentWidget());
  if (box == nullptr) return;
  box->installEventFilter(this);
  box->setContextMenuPolicy(Qt::PreventContextMenu);
}

bool QtPaste::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::KeyPress: {
      const auto& key = *static_cast<QKeyEvent*>(event);
      if (!key.matches(QKeySequence::Paste)) return false;
      Paste(IsOfSelection(key) ? QClipboard::Selection : QClipboard::Clipboard);
      return true;
    }
    case QEvent::MouseButtonRelease:
      if (static_cast<QMouseEvent*>(event)->button() != Qt::MiddleButton) return false;
      field_.deselect();
      if (QGuiApplication::clipboard()->supportsSelection()) Paste(QClipboard::Selection);
      return true;
    case QEvent::ContextMenu:
      if (watched == &field_) ShowMenu(*static_cast<QContextMenuEvent*>(event));
      return true;
    default:
      return false;
  }
}

void QtPaste::Paste(QClipboard::Mode mode) {
  if (!CanPaste()) return;
  const qsizetype kept = field_.text().size() - field_.selectedText().size();
  const qsizetype available = std::min(field_.maxLength() - kept, kMostCharacters);
  const QPointer<QLineEdit> field = &field_;
  const QString text = SelectionText(mode, available);
  if (field != nullptr && !text.isEmpty()) field->insert(text);
}

void QtPaste::ShowMenu(const QContextMenuEvent& event) {
  const bool canCopy = field_.hasSelectedText() && field_.echoMode() == QLineEdit::Normal;
  auto* menu = new QMenu(&field_);
  const auto add = [menu](const char* text, bool isEnabled, auto* receiver, auto slot) {
    menu->addAction(QLineEdit::tr(text), receiver, slot)->setEnabled(isEnabled);
  };
  add("&Undo", CanPaste() && field_.isUndoAvailable(), &field_, &QLineEdit::undo);
  menu->addSeparator();
  add("Cu&t", CanPaste() && canCopy, &field_, &QLineEdit::cut);
  add("&Copy", canCopy, &field_, &QLineEdit::copy);
  add("&Paste", CanPaste(), this, [this] { Paste(QClipboard::Clipboard); });
  add("Delete", CanPaste() && field_.hasSelectedText(), &field_, &QLineEdit::del);
  menu->addSeparator();
  add("Select All", !field_.text().isEmpty(), &field_, &QLineEdit::selectAll);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->popup(event.globalPos());
}

}  // namespace platform
