#include "platform/qt/qt_list_model.h"

#include <windows.h>

#include <commctrl.h>

namespace platform {
namespace {

int AlignmentOf(int format) {
  const Qt::Alignment horizontal = format == LVCFMT_RIGHT    ? Qt::AlignRight
                                   : format == LVCFMT_CENTER ? Qt::AlignHCenter
                                                             : Qt::AlignLeft;
  return static_cast<int>(horizontal | Qt::AlignVCenter);
}

}  // namespace

void QtListModel::Replace() {
  beginResetModel();
  rows_ = content_.RowCount();
  columns_ = static_cast<int>(content_.Columns().size());
  endResetModel();
}

void QtListModel::InsertRow(int row) {
  beginInsertRows({}, row, row);
  ++rows_;
  endInsertRows();
}

void QtListModel::RemoveRow(int row) {
  beginRemoveRows({}, row, row);
  --rows_;
  endRemoveRows();
}

void QtListModel::TakeRowCount() {
  const int rows = content_.RowCount();
  if (rows > rows_) {
    beginInsertRows({}, rows_, rows - 1);
    rows_ = rows;
    endInsertRows();
  } else if (rows < rows_) {
    beginRemoveRows({}, rows, rows_ - 1);
    rows_ = rows;
    endRemoveRows();
  }
}

void QtListModel::ShowCheckBoxes(bool shown) {
  hasCheckBoxes_ = shown;
  // The first row stands for all: views take their height from it.
  if (rows_ > 0 && columns_ > 0) emit dataChanged(index(0, 0), index(0, 0));
}

int QtListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

int QtListModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : columns_;
}

QVariant QtListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const auto& column = content_.Columns()[static_cast<std::size_t>(index.column())];
  switch (role) {
    case Qt::DisplayRole:
      return QString::fromStdWString(content_.Text(index.row(), index.column()));
    case Qt::TextAlignmentRole:
      return AlignmentOf(column.format);
    case Qt::CheckStateRole: {
      const UINT image = content_.State(index.row()) & LVIS_STATEIMAGEMASK;
      if (!hasCheckBoxes_ || index.column() != 0 || image == 0) return {};
      return image == INDEXTOSTATEIMAGEMASK(2) ? Qt::Checked : Qt::Unchecked;
    }
    default:
      return {};
  }
}

bool QtListModel::setData(const QModelIndex& index, const QVariant& /*value*/, int role) {
  if (role != Qt::CheckStateRole || !onCheckClicked) return false;
  onCheckClicked(index.row());
  return true;
}

QVariant QtListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  const auto number = static_cast<std::size_t>(section);
  if (orientation != Qt::Horizontal || number >= content_.Columns().size()) return {};
  const ListViewColumn& column = content_.Columns()[number];
  if (role == Qt::DisplayRole) return QString::fromStdWString(column.title);
  if (role == Qt::TextAlignmentRole) return AlignmentOf(column.format);
  return {};
}

Qt::ItemFlags QtListModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  const Qt::ItemFlags plain = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
  return hasCheckBoxes_ && index.column() == 0 ? plain | Qt::ItemIsUserCheckable : plain;
}

}  // namespace platform
