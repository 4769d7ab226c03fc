#include "platform/qt/qt_row_selection.h"

namespace platform {

void QtRowSelection::select(const QItemSelection& selection, SelectionFlags command) {
  if (command == NoUpdate || signalsBlocked()) return;
  if (command.testFlag(Clear)) {
    kept_ = {};
  } else if (!command.testFlag(Current)) {
    kept_ = content_.SelectedRows();
  }
  RowRanges rows = kept_;
  for (const QItemSelectionRange& range : selection) {
    const RowRange each{range.top(), range.bottom()};
    if (command.testFlag(Select)) rows.Add(each);
    if (command.testFlag(Deselect)) rows.Remove(each);
    if (command.testFlag(Toggle)) rows.Toggle(each);
  }
  events_.OnSelected(rows);
}

}  // namespace platform
