// The left side of the help viewer: the contents as a tree, and the search with its results. They
// live on the window thread. Forget is called when the window is destroyed; the widgets live on
// until they are retired.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTreeWidget>
#include <optional>
#include <vector>

#include "platform/shell/help_peers.h"

namespace platform {

class QtHelpContents final : public QTreeWidget {
 public:
  explicit QtHelpContents(HelpEvents& events);
  void Forget() { events_ = nullptr; }

  void SetEntries(const std::vector<HelpEntry>& entries);
  void Select(std::optional<std::size_t> place);

 private:
  void Report(const QTreeWidgetItem* item);

  HelpEvents* events_;
  std::vector<QTreeWidgetItem*> items_;  // in the order of the entries
};

class QtHelpSearch final : public QWidget {
 public:
  explicit QtHelpSearch(HelpEvents& events);
  void Forget() { events_ = nullptr; }

  void SetTexts(const QString& words, const QString& nothingFound);
  void SetResults(const std::vector<HelpResult>& results);
  // Gives the field for the words the focus.
  void EnterWords();

 private:
  void Search();
  void Report();

  HelpEvents* events_;
  QLabel* label_;
  QLineEdit* words_;
  QListWidget* results_;
  QLabel* nothingFound_;
};

}  // namespace platform
