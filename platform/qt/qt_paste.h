// Pasting into a field of one line: never more of the text is read than the field has room for. The
// toolkit would read all of it, also to see whether a menu shall offer it. Owned by the field; on
// the window thread.
#pragma once

#include <QClipboard>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QObject>

namespace platform {

class QtPaste final : public QObject {
 public:
  // Inside a spin box the keys are the box's.
  explicit QtPaste(QLineEdit& field);

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void Paste(QClipboard::Mode mode);
  void ShowMenu(const QContextMenuEvent& event);
  bool CanPaste() const { return field_.isEnabled() && !field_.isReadOnly(); }

  QLineEdit& field_;
};

}  // namespace platform
