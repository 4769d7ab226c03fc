// The rows of a list view as a model for Qt's views. Lives on the window thread.
#pragma once

#include <QAbstractTableModel>
#include <functional>

#include "platform/controls/list_view_peer.h"

namespace platform {

class QtListModel final : public QAbstractTableModel {
 public:
  explicit QtListModel(const ListViewContent& content) : content_(content) {}

  // The model shows a change of the content only after the matching call; texts and check boxes
  // need none, since views that paint ask for them.
  void Replace();
  void InsertRow(int row);
  void RemoveRow(int row);
  // Rows were added or removed at the end.
  void TakeRowCount();
  void ChangeColumn(int column) { emit headerDataChanged(Qt::Horizontal, column, column); }

  void ShowCheckBoxes(bool shown);

  // Called when the user clicks a check box.
  std::function<void(int row)> onCheckClicked;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  const ListViewContent& content_;
  int rows_ = 0;
  int columns_ = 0;
  bool hasCheckBoxes_ = false;
};

}  // namespace platform
