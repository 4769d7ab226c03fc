#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QScreen>
#include <QStyleOptionFrame>
#include <QStylePainter>
#include <QToolTip>
#include <algorithm>

#include "platform/qt/qt_application.h"
#include "platform/qt/qt_colour.h"
#include "platform/qt/qt_help.h"
#include "platform/qt/qt_peer.h"

namespace platform {
namespace {

constexpr int kWidestText = 350;
constexpr int kUsualMargin = 6;
// The distance from the pointer and from the edges of the screen.
constexpr int kBelowPointer = 20;
constexpr int kDistance = 4;

int MarginOf(LONG margin) {
  return margin >= 0 ? static_cast<int>(margin) : kUsualMargin;
}

// With its middle below the point, above it where there is no room below.
QPoint PositionAt(const QPoint& point, const QSize& size) {
  const QScreen* screen = QGuiApplication::screenAt(point);
  if (screen == nullptr) screen = QGuiApplication::primaryScreen();
  const QRect area =
      screen->availableGeometry().adjusted(kDistance, kDistance, -kDistance, -kDistance);
  const int below = point.y() + kBelowPointer;
  const bool fits = below + size.height() <= area.bottom();
  const int top = fits ? below : point.y() - kDistance - size.height();
  const int left = std::min(point.x() - size.width() / 2, area.right() + 1 - size.width());
  return {std::max(left, area.left()), std::max(top, area.top())};
}

class PopupWidget final : public QLabel {
 public:
  PopupWidget() : QLabel(nullptr, Qt::ToolTip | Qt::WindowStaysOnTopHint) {
    setTextFormat(Qt::PlainText);
    setFont(QToolTip::font());
    setPalette(QToolTip::palette());
    setForegroundRole(QPalette::ToolTipText);
    setBackgroundRole(QPalette::ToolTipBase);
  }

  void SetLook(const HelpPopupLook& look) {
    QPalette colours = palette();
    if (look.textColour) colours.setColor(QPalette::ToolTipText, QtColour(*look.textColour));
    if (look.background) colours.setColor(QPalette::ToolTipBase, QtColour(*look.background));
    setPalette(colours);
    setContentsMargins(MarginOf(look.margins.left), MarginOf(look.margins.top),
                       MarginOf(look.margins.right), MarginOf(look.margins.bottom));
    ensurePolished();
    const int widest = kWidestText + contentsMargins().left() + contentsMargins().right();
    const QSize unbroken = sizeHint();
    setWordWrap(unbroken.width() > widest);
    setFixedSize(wordWrap() ? QSize(widest, heightForWidth(widest)) : unbroken);
  }

 private:
  void paintEvent(QPaintEvent* event) override {
    QStylePainter painter(this);
    QStyleOptionFrame frame;
    frame.initFrom(this);
    painter.drawPrimitive(QStyle::PE_PanelTipLabel, frame);
    painter.end();
    QLabel::paintEvent(event);
  }
};

QtApplication& Application() {
  return *static_cast<QtApplication*>(QCoreApplication::instance());
}

class QtHelpPopup final : public QtPeer<HelpPopupPeer>, private InputWatch {
 public:
  explicit QtHelpPopup(WindowEvents& events) : QtPeer(new PopupWidget, events), events_(events) {
    Application().SetInputWatch(this);
  }
  ~QtHelpPopup() override { Application().ReleaseInputWatch(this); }
  QtHelpPopup(const QtHelpPopup&) = delete;
  QtHelpPopup& operator=(const QtHelpPopup&) = delete;

  void SetText(const std::wstring& text) override {
    Popup().setText(QString::fromStdWString(text));
  }
  // The popup has the size of its text.
  void SetBounds(const RECT& /*bounds*/) override {}
  void SetLook(const HelpPopupLook& look) override {
    Popup().SetLook(look);
    Popup().move(PositionAt({look.point.x, look.point.y}, Popup().size()));
  }

 private:
  PopupWidget& Popup() const { return *static_cast<PopupWidget*>(Widget()); }

  bool OnInput(QEvent& event) override {
    switch (event.type()) {
      case QEvent::KeyPress:
        End();
        return IsEscape(event);
      // Escape is not to be a shortcut of the window below, so that it arrives as a key.
      case QEvent::ShortcutOverride:
        if (IsEscape(event)) {
          event.accept();
          return true;
        }
        End();
        return false;
      case QEvent::MouseButtonPress:
        End();
        return false;
      case QEvent::ApplicationStateChange:
        if (QGuiApplication::applicationState() != Qt::ApplicationActive) End();
        return false;
      default:
        return false;
    }
  }

  static bool IsEscape(const QEvent& event) {
    return static_cast<const QKeyEvent&>(event).key() == Qt::Key_Escape;
  }

  void End() {
    Application().ReleaseInputWatch(this);
    Popup().hide();
    events_.OnCloseRequested();
  }

  WindowEvents& events_;
};

}  // namespace

std::unique_ptr<HelpPopupPeer> QtHelp::MakePopup(WindowEvents& events) {
  return std::make_unique<QtHelpPopup>(events);
}

}  // namespace platform
