// List views as Qt's tree views without a tree.
#include <commctrl.h>

#include <QHeaderView>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>
#include <memory>

#include "platform/qt/qt_control_peers.h"
#include "platform/qt/qt_list_model.h"
#include "platform/qt/qt_list_widget.h"
#include "platform/qt/qt_row_selection.h"

namespace platform {
namespace {

constexpr int kRowSpace = 3;  // pixels, for the lines of the grid
constexpr int kPadding = 12;  // pixels, on both sides of a text together

// Draws the cells according to the list view's styles and the selection that the control holds.
class CellPainter final : public QStyledItemDelegate {
 public:
  CellPainter(QtListWidget* view, bool showsSelectionAlways)
      : QStyledItemDelegate(view), view_(*view), showsSelectionAlways_(showsSelectionAlways) {}

  bool hasGrid = false;
  bool selectsFullRow = false;

 private:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    const bool showsSelection = showsSelectionAlways_ || view_.hasFocus();
    const bool isInSelection = selectsFullRow || index.column() == 0;
    option->state.setFlag(QStyle::State_Selected,
                          showsSelection && isInSelection && view_.IsSelected(index));
  }
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    return QStyledItemDelegate::sizeHint(option, index) + QSize(0, kRowSpace);
  }
  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    QStyledItemDelegate::paint(painter, option, index);
    if (!hasGrid) return;
    painter->setPen(option.palette.color(QPalette::Midlight));
    painter->drawLine(option.rect.topRight(), option.rect.bottomRight());
    painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
  }

  const QtListWidget& view_;
  const bool showsSelectionAlways_;
};

class QtListViewPeer final : public QtControlPeer<ListViewPeer> {
 public:
  QtListViewPeer(QtListWidget* view, const PeerOrigin& origin, const ListViewContent& content,
                 ListViewEvents& events)
      : QtControlPeer(view, origin),
        view_(view),
        content_(content),
        events_(events),
        model_(content),
        selection_(&model_, content, events),
        cells_(new CellPainter(view, (origin.style & LVS_SHOWSELALWAYS) != 0)) {
    SetUpView(origin.style);
    SetUpHeader(origin.style);
    model_.onCheckClicked = [&events](int row) { events.OnCheckClicked(row); };
    view->setModel(&model_);
    const std::unique_ptr<QItemSelectionModel> unused(view->selectionModel());
    view->setSelectionModel(&selection_);
    Listen();
  }
  // The widget may outlive the peer.
  ~QtListViewPeer() override {
    if (view_ == nullptr) return;
    view_->Forget();
    view_->setModel(nullptr);
  }

  void SetText(const std::wstring& /*text*/) override {}
  void ColumnInserted() override {
    const QSignalBlocker silence(selection_);
    const QScopedValueRollback sizing(sizing_, true);
    model_.Replace();
    for (int column = 0; column < model_.columnCount(); ++column)
      ShowWidth(column);
    ShowFocus();
  }
  void ColumnChanged(int column) override {
    const QScopedValueRollback sizing(sizing_, true);
    ShowWidth(column);
    model_.ChangeColumn(column);
    RowsChanged();
  }
  void RowInserted(int row) override {
    const QSignalBlocker silence(selection_);
    selection_.Forget();
    model_.InsertRow(row);
  }
  void RowRemoved(int row) override {
    const QSignalBlocker silence(selection_);
    selection_.Forget();
    model_.RemoveRow(row);
    ShowFocus();
  }
  void RowCountChanged() override {
    const QSignalBlocker silence(selection_);
    selection_.Forget();
    model_.TakeRowCount();
    if (model_.rowCount() == 0) view_->scrollToTop();
    ShowFocus();
    RowsChanged();
  }
  void RowsChanged() override { view_->viewport()->update(); }
  void StatesChanged() override {
    const QSignalBlocker silence(selection_);
    selection_.Forget();
    ShowFocus();
    RowsChanged();
  }

  void EnsureVisible(int row) override { view_->scrollTo(model_.index(row, 0)); }
  std::optional<RECT> BoundsOf(int row) const override {
    const int last = model_.columnCount() - 1;
    if (last < 0) return std::nullopt;
    const QRect cells =
        view_->visualRect(model_.index(row, 0)) | view_->visualRect(model_.index(row, last));
    return WinRect(cells.translated(view_->viewport()->pos()));
  }
  RowRange RowsInView() const override {
    const int rowHeight = std::max(1, view_->visualRect(model_.index(0, 0)).height());
    const int first = view_->verticalScrollBar()->value();
    const int last = first + view_->viewport()->height() / rowHeight;
    return {first, std::min(last, model_.rowCount() - 1)};
  }
  void SetExtendedStyle(DWORD style) override {
    cells_->hasGrid = (style & LVS_EX_GRIDLINES) != 0;
    cells_->selectsFullRow = (style & LVS_EX_FULLROWSELECT) != 0;
    view_->setAllColumnsShowFocus(cells_->selectsFullRow);
    model_.ShowCheckBoxes((style & LVS_EX_CHECKBOXES) != 0);
    RowsChanged();
  }
  int RowWidthFor(const std::wstring& text, bool withCheckBox) const override {
    const int box = view_->style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, view_) +
                    view_->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, view_);
    const int width = view_->fontMetrics().horizontalAdvance(QString::fromStdWString(text));
    return width + kPadding + (withCheckBox ? box : 0);
  }
  int HeaderWidthFor(const std::wstring& text) const override {
    const auto metrics = view_->header()->fontMetrics();
    return metrics.horizontalAdvance(QString::fromStdWString(text)) + kPadding;
  }
  int ClientWidth() const override { return view_->width() - 2 * view_->frameWidth(); }

 private:
  void SetUpView(DWORD style) {
    view_->setFocusPolicy(FocusPolicyOf(style));
    view_->setItemDelegate(cells_);
    view_->setRootIsDecorated(false);
    view_->setItemsExpandable(false);
    view_->setIndentation(0);
    view_->setUniformRowHeights(true);
    view_->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    view_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view_->setSelectionBehavior(QAbstractItemView::SelectRows);
    view_->setSelectionMode((style & LVS_SINGLESEL) != 0 ? QAbstractItemView::SingleSelection
                                                         : QAbstractItemView::ExtendedSelection);
    view_->setTextElideMode(Qt::ElideRight);
  }
  void SetUpHeader(DWORD style) {
    QHeaderView* header = view_->header();
    header->setStretchLastSection(false);
    header->setMinimumSectionSize(0);
    header->setSectionsMovable(false);
    header->setSectionsClickable((style & LVS_NOSORTHEADER) == 0);
    header->setHighlightSections(false);
    header->setHidden((style & LVS_NOCOLUMNHEADER) != 0);
  }
  void Listen() {
    QHeaderView* header = view_->header();
    QObject::connect(header, &QHeaderView::sectionClicked, Context(),
                     [this](int column) { events_.OnHeaderClicked(column); });
    QObject::connect(header, &QHeaderView::sectionResized, Context(),
                     [this](int column, int /*before*/, int width) {
                       if (!sizing_) events_.OnHeaderResized(column, width);
                     });
    const auto click = [this](bool twice) {
      return [this, twice](const QModelIndex& index) {
        events_.OnRowClicked(index.row(), index.column(), twice);
      };
    };
    QObject::connect(view_, &QTreeView::clicked, Context(), click(false));
    QObject::connect(view_, &QTreeView::doubleClicked, Context(), click(true));
    QObject::connect(&selection_, &QItemSelectionModel::currentRowChanged, Context(),
                     [this](const QModelIndex& current) { events_.OnFocusMoved(current.row()); });
  }

  void ShowWidth(int column) {
    const auto& columns = content_.Columns();
    view_->header()->resizeSection(column, columns[static_cast<std::size_t>(column)].width);
  }
  // To be called with the selection's signals blocked: the view would scroll to the row, and lay
  // out all rows for it.
  void ShowFocus() {
    const int row = content_.FocusedRow();
    if (selection_.currentIndex().row() == row) return;
    selection_.setCurrentIndex(model_.index(row, 0), QItemSelectionModel::NoUpdate);
  }

  QPointer<QtListWidget> view_;
  const ListViewContent& content_;
  ListViewEvents& events_;
  QtListModel model_;
  QtRowSelection selection_;
  CellPainter* cells_;
  // Set while widths that the control holds are shown.
  bool sizing_ = false;
};

}  // namespace

std::unique_ptr<ListViewPeer> QtControlPeers::MakeListView(const PeerOrigin& origin,
                                                           const ListViewContent& content,
                                                           ListViewEvents& events) {
  return std::make_unique<QtListViewPeer>(new QtListWidget(origin, content, events), origin,
                                          content, events);
}

}  // namespace platform
