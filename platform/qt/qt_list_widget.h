// The widget of a list view: a tree view without a tree, whose selection the control holds. Owned
// by the peer, which it may outlive; on the window thread.
#pragma once

#include <QTreeView>

#include "platform/controls/list_view_peer.h"

namespace platform {

class QtListWidget final : public QTreeView {
 public:
  QtListWidget(QWidget* parent, const ListViewContent& content)
      : QTreeView(parent), content_(&content) {}

  // The content is not used any more.
  void Forget() { content_ = nullptr; }

  bool IsSelected(const QModelIndex& index) const;

  // Whether letters that the user types find the row that begins with them. The base class asks for
  // the texts of all rows on the way.
  bool canSearch = true;

 private:
  void keyboardSearch(const QString& text) override {
    if (canSearch) QTreeView::keyboardSearch(text);
  }
  // A range of rows is one range; the base class would add row after row.
  void setSelection(const QRect& area, QItemSelectionModel::SelectionFlags command) override;
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                       const QEvent* event) const override;

  const ListViewContent* content_;
};

}  // namespace platform
