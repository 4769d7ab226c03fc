// The selection of a list view, which the control holds: the toolkit's own model would go through
// all ranges, one by one, for each change and each painted cell. Holds only the current row, which
// is the one with the focus; what the user selects is reported. Blocked signals mean that the
// control's content is being shown: nothing is reported then. Owned by the peer, on the window
// thread.
#pragma once

#include <QItemSelectionModel>

#include "platform/controls/list_view_peer.h"

namespace platform {

class QtRowSelection final : public QItemSelectionModel {
 public:
  QtRowSelection(QAbstractItemModel* model, const ListViewContent& content, ListViewEvents& events)
      : QItemSelectionModel(model), content_(content), events_(events) {}

  using QItemSelectionModel::select;
  void select(const QItemSelection& selection, SelectionFlags command) override;

  // The program has changed rows or states: what the user selects next does not add to rows that
  // were selected before.
  void Forget() { kept_ = {}; }

 private:
  const ListViewContent& content_;
  ListViewEvents& events_;
  // The rows that stay selected while the user moves the other end of a range.
  RowRanges kept_;
};

}  // namespace platform
