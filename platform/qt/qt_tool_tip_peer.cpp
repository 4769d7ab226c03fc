// Tool tips by Qt's own.
#include <QHelpEvent>
#include <QPointer>
#include <QToolTip>
#include <map>

#include "platform/qt/qt_control_peers.h"

namespace platform {
namespace {

// Rich text, which Qt breaks into lines, with the line breaks of the text itself.
QString TipOf(const std::wstring& text) {
  const QString escaped = QString::fromStdWString(text).toHtmlEscaped();
  return "<p>" + QString(escaped).remove('\r').replace('\n', "<br>") + "</p>";
}

// One area of a window. Qt sends QEvent::ToolTip to the widget under the pointer, disabled or not,
// and then to its parents.
class Tool final : public QObject {
 public:
  Tool(QWidget* window, const QRect& area, const std::wstring& text)
      : window_(window), area_(area), text_(TipOf(text)) {
    window->installEventFilter(this);
  }

 private:
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() != QEvent::ToolTip) return false;
    const auto* help = static_cast<QHelpEvent*>(event);
    if (!area_.contains(help->pos())) return false;
    QToolTip::showText(help->globalPos(), text_, window_, area_);
    return true;
  }

  const QPointer<QWidget> window_;
  const QRect area_;
  const QString text_;
};

class QtToolTipPeer final : public QtControlPeer<ToolTipPeer> {
 public:
  // The widget is never shown: it only represents the window.
  explicit QtToolTipPeer(const PeerOrigin& origin)
      : QtControlPeer(new QWidget(WidgetOf(origin.parent), Qt::ToolTip), origin) {}

  void SetShown(bool /*shown*/) override {}
  void AddTool(WindowPeer& window, UINT_PTR number, const RECT& area,
               const std::wstring& text) override {
    tools_[number] = std::make_unique<Tool>(WidgetOf(&window), QtRect(area), text);
  }
  void RemoveTool(UINT_PTR number) override { tools_.erase(number); }

 private:
  std::map<UINT_PTR, std::unique_ptr<Tool>> tools_;
};

}  // namespace

std::unique_ptr<ToolTipPeer> QtControlPeers::MakeToolTip(const PeerOrigin& origin) {
  return std::make_unique<QtToolTipPeer>(origin);
}

}  // namespace platform
