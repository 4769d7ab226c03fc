// Pastes into a line edit without reading more text than fits. The toolkit would read the whole
// text, even to decide whether a context menu offers Paste. Owned by the field; on the window
// thread.
#pragma once

#include <QClipboard>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QObject>

namespace platform {

class QtPaste final : public QObject {
 public:
  // Inside a spin box, the box receives the keys.
  explicit QtPaste(QLineEdit& field);

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void Paste(QClipboard::Mode mode);
  void ShowMenu(const QContextMenuEvent& event);
  bool CanPaste() const { return field_.isEnabled() && !field_.isReadOnly(); }

  QLineEdit& field_;
};

}  // namespace platform
