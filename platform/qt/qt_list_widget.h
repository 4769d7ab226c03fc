// The widget of a list view: a tree view without a tree, whose selection the control holds. Owned
// by the peer, which it may outlive; on the window thread.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QTreeView>

#include "platform/controls/control_peers.h"

namespace platform {

class QtListWidget final : public QTreeView {
 public:
  QtListWidget(const PeerOrigin& origin, const ListViewContent& content, ListViewEvents& events);

  // What it was created with is not used any more.
  void Forget();

  bool IsSelected(const QModelIndex& index) const { return HasState(index, LVIS_SELECTED); }

 private:
  bool HasState(const QModelIndex& index, UINT state) const;

  // Letters that the user types find the row that begins with them; on the way the base class asks
  // for the texts of all rows.
  void keyboardSearch(const QString& text) override {
    if (canSearch_) QTreeView::keyboardSearch(text);
  }
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  // A range of rows is one range; the base class would add row after row.
  void setSelection(const QRect& area, QItemSelectionModel::SelectionFlags command) override;
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                       const QEvent* event) const override;

  WindowEvents* window_;
  const ListViewContent* content_;
  ListViewEvents* events_;
  const bool canSearch_;
};

}  // namespace platform
