#include "platform/qt/qt_list_widget.h"

#include <algorithm>

#include "platform/qt/qt_input.h"
#include "platform/qt/qt_peer.h"

namespace platform {
namespace {

Qt::KeyboardModifiers ModifiersOf(const QEvent* event) {
  const bool isInput = event != nullptr && event->isInputEvent();
  return isInput ? static_cast<const QInputEvent*>(event)->modifiers() : Qt::NoModifier;
}

}  // namespace

QtListWidget::QtListWidget(const PeerOrigin& origin, const ListViewContent& content,
                           ListViewEvents& events)
    : QTreeView(WidgetOf(origin.parent)),
      window_(&origin.events),
      content_(&content),
      events_(&events),
      canSearch_((origin.style & LVS_OWNERDATA) == 0) {}

void QtListWidget::Forget() {
  window_ = nullptr;
  content_ = nullptr;
  events_ = nullptr;
}

bool QtListWidget::HasState(const QModelIndex& index, UINT state) const {
  return content_ != nullptr && (content_->State(index.row()) & state) != 0;
}

void QtListWidget::keyPressEvent(QKeyEvent* event) {
  if (window_ == nullptr) return;
  ReportKey(*event, *window_);
  // The program alone decides what these do.
  if (event->matches(QKeySequence::Copy) || event->matches(QKeySequence::SelectAll)) return;
  const bool isSpace = event->key() == Qt::Key_Space && event->modifiers() == Qt::NoModifier;
  if (isSpace && HasState(currentIndex(), LVIS_STATEIMAGEMASK)) {
    events_->OnCheckClicked(currentIndex().row());
  } else {
    QTreeView::keyPressEvent(event);
  }
}

void QtListWidget::keyReleaseEvent(QKeyEvent* event) {
  if (window_ != nullptr) ReportKey(*event, *window_);
  QTreeView::keyReleaseEvent(event);
}

void QtListWidget::mouseReleaseEvent(QMouseEvent* event) {
  QTreeView::mouseReleaseEvent(event);
  if (event->button() != Qt::RightButton || window_ == nullptr) return;
  const QPoint place = event->globalPosition().toPoint();
  window_->OnContextMenuRequested({place.x(), place.y()});
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
