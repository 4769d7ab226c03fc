// List views as Qt's tree views without a tree.
#include <commctrl.h>

#include <QHeaderView>
#include <QPainter>
#include <QScopedValueRollback>
#include <QStyledItemDelegate>
#include <QTreeView>
#include <algorithm>
#include <vector>

#include "platform/qt/qt_control_peers.h"
#include "platform/qt/qt_list_model.h"

namespace platform {
namespace {

constexpr int kRowSpace = 3;  // pixels, for the lines of the grid
constexpr int kPadding = 12;  // pixels, on both sides of a text together

// Draws the cells according to the list view's styles.
class CellPainter final : public QStyledItemDelegate {
 public:
  explicit CellPainter(QTreeView* view, bool showsSelectionAlways)
      : QStyledItemDelegate(view), view_(*view), showsSelectionAlways_(showsSelectionAlways) {}

  bool hasGrid = false;
  bool selectsFullRow = false;

 private:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    const bool hides = !showsSelectionAlways_ && !view_.hasFocus();
    if (hides || (!selectsFullRow && index.column() != 0)) option->state &= ~QStyle::State_Selected;
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

  const QTreeView& view_;
  const bool showsSelectionAlways_;
};

class QtListViewPeer final : public QtControlPeer<ListViewPeer> {
 public:
  QtListViewPeer(QTreeView* view, const PeerOrigin& origin, const ListViewContent& content,
                 ListViewEvents& events)
      : QtControlPeer(view, origin),
        view_(view),
        content_(content),
        events_(events),
        model_(content),
        cells_(new CellPainter(view, (origin.style & LVS_SHOWSELALWAYS) != 0)) {
    SetUpView(origin.style);
    SetUpHeader(origin.style);
    model_.onCheckClicked = [&events](int row) { events.OnCheckClicked(row); };
    view->setModel(&model_);
    Listen();
  }
  // The widget may outlive the peer.
  ~QtListViewPeer() override {
    if (view_ != nullptr) view_->setModel(nullptr);
  }

  void SetText(const std::wstring& /*text*/) override {}
  void ColumnsChanged() override { RowsReplaced(); }
  void RowInserted(int row) override {
    const QScopedValueRollback showing(showing_, true);
    model_.InsertRow(row);
    ShowSelection();
  }
  void RowRemoved(int row) override {
    const QScopedValueRollback showing(showing_, true);
    model_.RemoveRow(row);
    ShowSelection();
  }
  void RowChanged(int row) override {
    model_.ChangeRow(row);
    // While the user's selection is being reported, Qt shows it already.
    if (reporting_) return;
    const QScopedValueRollback showing(showing_, true);
    ShowStateOf(row);
  }
  void RowsReplaced() override {
    const QScopedValueRollback showing(showing_, true);
    model_.Replace();
    const auto& columns = content_.Columns();
    for (std::size_t column = 0; column < columns.size(); ++column)
      view_->header()->resizeSection(static_cast<int>(column), columns[column].width);
    ShowSelection();
  }

  void EnsureVisible(int row) override { view_->scrollTo(model_.index(row, 0)); }
  void SetExtendedStyle(DWORD style) override {
    cells_->hasGrid = (style & LVS_EX_GRIDLINES) != 0;
    cells_->selectsFullRow = (style & LVS_EX_FULLROWSELECT) != 0;
    view_->setAllColumnsShowFocus(cells_->selectsFullRow);
    model_.ShowCheckBoxes((style & LVS_EX_CHECKBOXES) != 0);
    view_->viewport()->update();
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
                       if (!showing_) events_.OnHeaderResized(column, width);
                     });
    const auto click = [this](bool twice) {
      return [this, twice](const QModelIndex& index) {
        events_.OnRowClicked(index.row(), index.column(), twice);
      };
    };
    QObject::connect(view_, &QTreeView::clicked, Context(), click(false));
    QObject::connect(view_, &QTreeView::doubleClicked, Context(), click(true));
    const QItemSelectionModel* selection = view_->selectionModel();
    QObject::connect(selection, &QItemSelectionModel::selectionChanged, Context(),
                     [this] { ReportSelection(); });
    QObject::connect(selection, &QItemSelectionModel::currentRowChanged, Context(),
                     [this] { ReportSelection(); });
  }

  void ReportSelection() {
    if (showing_) return;
    const QScopedValueRollback reporting(reporting_, true);
    std::vector<int> rows;
    for (const QModelIndex& index : view_->selectionModel()->selectedRows())
      rows.push_back(index.row());
    std::ranges::sort(rows);
    events_.OnSelected(rows, view_->currentIndex().row());
  }
  void ShowSelection() {
    for (int row = 0; row < model_.rowCount(); ++row)
      ShowStateOf(row);
  }
  void ShowStateOf(int row) {
    if (model_.columnCount() == 0) return;
    QItemSelectionModel& selection = *view_->selectionModel();
    const QModelIndex index = model_.index(row, 0);
    const UINT state = content_.State(row);
    const auto change =
        (state & LVIS_SELECTED) != 0 ? QItemSelectionModel::Select : QItemSelectionModel::Deselect;
    selection.select(index, change | QItemSelectionModel::Rows);
    if ((state & LVIS_FOCUSED) != 0) {
      selection.setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    }
  }

  QPointer<QTreeView> view_;
  const ListViewContent& content_;
  ListViewEvents& events_;
  QtListModel model_;
  CellPainter* cells_;
  // Set while the control's changes are shown, and while the user's are reported.
  bool showing_ = false;
  bool reporting_ = false;
};

}  // namespace

std::unique_ptr<ListViewPeer> QtControlPeers::MakeListView(const PeerOrigin& origin,
                                                           const ListViewContent& content,
                                                           ListViewEvents& events) {
  return std::make_unique<QtListViewPeer>(new QTreeView(WidgetOf(origin.parent)), origin, content,
                                          events);
}

}  // namespace platform
