#include "platform/qt/qt_help_panels.h"

#include <QVBoxLayout>
#include <algorithm>

namespace platform {
namespace {

constexpr int kLongestWords = 200;
constexpr int kPlaceRole = Qt::UserRole;

}  // namespace

QtHelpContents::QtHelpContents(HelpEvents& events) : events_(&events) {
  setObjectName("contents");
  setHeaderHidden(true);
  connect(this, &QTreeWidget::itemClicked, this, [this](auto* item) { Report(item); });
  connect(this, &QTreeWidget::itemActivated, this, [this](auto* item) { Report(item); });
}

void QtHelpContents::Report(const QTreeWidgetItem* item) {
  if (events_ != nullptr) events_->OnEntry(item->data(0, kPlaceRole).toULongLong());
}

void QtHelpContents::SetEntries(const std::vector<HelpEntry>& entries) {
  clear();
  items_.clear();
  // The last item of each level.
  std::vector<QTreeWidgetItem*> last;
  for (const HelpEntry& entry : entries) {
    last.resize(std::min(entry.level, last.size()));
    auto* item = last.empty() ? new QTreeWidgetItem(this) : new QTreeWidgetItem(last.back());
    item->setText(0, QString::fromStdWString(entry.title));
    item->setToolTip(0, item->text(0));
    item->setData(0, kPlaceRole, qulonglong{items_.size()});
    last.push_back(item);
    items_.push_back(item);
  }
  expandAll();
}

void QtHelpContents::Select(std::optional<std::size_t> place) {
  QTreeWidgetItem* item = place.has_value() && *place < items_.size() ? items_[*place] : nullptr;
  setCurrentItem(item);
  if (item == nullptr) clearSelection();
}

QtHelpSearch::QtHelpSearch(HelpEvents& events)
    : events_(&events),
      label_(new QLabel(this)),
      words_(new QLineEdit(this)),
      results_(new QListWidget(this)),
      nothingFound_(new QLabel(this)) {
  label_->setBuddy(words_);
  words_->setObjectName("words");
  words_->setMaxLength(kLongestWords);
  results_->setObjectName("results");
  nothingFound_->setWordWrap(true);
  nothingFound_->hide();
  auto* layout = new QVBoxLayout(this);
  for (QWidget* each : {static_cast<QWidget*>(label_), static_cast<QWidget*>(words_),
                        static_cast<QWidget*>(nothingFound_), static_cast<QWidget*>(results_)})
    layout->addWidget(each);
  connect(words_, &QLineEdit::returnPressed, this, [this] { Search(); });
  connect(results_, &QListWidget::itemClicked, this, [this] { Report(); });
  connect(results_, &QListWidget::itemActivated, this, [this] { Report(); });
}

void QtHelpSearch::SetTexts(const QString& words, const QString& nothingFound) {
  label_->setText(words);
  nothingFound_->setText(nothingFound);
}

void QtHelpSearch::Search() {
  if (events_ == nullptr) return;
  events_->OnSearch(words_->text().toStdWString());
  nothingFound_->setVisible(results_->count() == 0);
  if (results_->count() == 0) return;
  results_->setCurrentRow(0);
  results_->setFocus(Qt::OtherFocusReason);
}

void QtHelpSearch::SetResults(const std::vector<HelpResult>& results) {
  results_->clear();
  nothingFound_->hide();
  for (const HelpResult& result : results)
    results_->addItem(QString::fromStdWString(result.title));
}

void QtHelpSearch::EnterWords() {
  words_->setFocus(Qt::ShortcutFocusReason);
  words_->selectAll();
}

void QtHelpSearch::Report() {
  const int row = results_->currentRow();
  if (events_ != nullptr && row >= 0) events_->OnResult(static_cast<std::size_t>(row));
}

}  // namespace platform
