// A topic of the help. What it refers to is loaded from the help alone, and its links are reported
// instead of followed. Lives on the window thread.
#pragma once

#include <QTextBrowser>

#include "platform/shell/help_peers.h"

namespace platform {

class QtHelpPage final : public QTextBrowser {
 public:
  explicit QtHelpPage(HelpEvents& events);

  // The window is destroyed; the widget lives on until it is retired.
  void Forget() { events_ = nullptr; }

  void ShowPage(const HelpPage& page);
  // Selects the next occurrence of the page's mark, after the last one the first again.
  void FindNext();

 private:
  QVariant loadResource(int type, const QUrl& name) override;
  QByteArray BytesOf(const QUrl& name) const;

  HelpEvents* events_;
  QString mark_;
};

}  // namespace platform
