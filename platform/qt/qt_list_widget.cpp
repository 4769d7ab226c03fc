#include "platform/qt/qt_list_widget.h"

#include <windows.h>

#include <commctrl.h>

#include <QMouseEvent>
#include <algorithm>

namespace platform {
namespace {

Qt::KeyboardModifiers ModifiersOf(const QEvent* event) {
  const bool isInput = event != nullptr && event->isInputEvent();
  return isInput ? static_cast<const QInputEvent*>(event)->modifiers() : Qt::NoModifier;
}

}  // namespace

bool QtListWidget::IsSelected(const QModelIndex& index) const {
  return content_ != nullptr && (content_->State(index.row()) & LVIS_SELECTED) != 0;
}

void QtListWidget::setSelection(const QRect& area, QItemSelectionModel::SelectionFlags command) {
  const auto [top, bottom] = std::minmax({area.top(), area.bottom()});
  const int left = columnViewportPosition(0);
  const QModelIndex first = indexAt({left, top});
  const QModelIndex last = indexAt({left, bottom});
  QItemSelection rows;
  if (first.isValid() || last.isValid()) {
    // An end above or below all rows.
    const int from = first.isValid() ? first.row() : 0;
    const int to = last.isValid() ? last.row() : model()->rowCount() - 1;
    rows.select(model()->index(from, 0), model()->index(to, 0));
  }
  selectionModel()->select(rows, command);
}

QItemSelectionModel::SelectionFlags QtListWidget::selectionCommand(const QModelIndex& index,
                                                                   const QEvent* event) const {
  auto command = QTreeView::selectionCommand(index, event);
  // Shift selects the rows from the anchor on; only with Ctrl others stay selected.
  const bool keepsOthers = ModifiersOf(event).testFlag(Qt::ControlModifier);
  if (command.testFlag(QItemSelectionModel::Current) && !keepsOthers) {
    command |= QItemSelectionModel::Clear;
  }
  if (event == nullptr || event->type() != QEvent::MouseButtonPress) return command;
  // The base class asks the toolkit's own selection, which is empty.
  const bool isRight = static_cast<const QMouseEvent*>(event)->button() == Qt::RightButton;
  if (isRight && IsSelected(index)) return QItemSelectionModel::NoUpdate;
  if (command.testFlag(QItemSelectionModel::Toggle)) {
    command.setFlag(QItemSelectionModel::Toggle, false);
    command |= IsSelected(index) ? QItemSelectionModel::Deselect : QItemSelectionModel::Select;
  }
  return command;
}

}  // namespace platform
