// Tab controls as Qt's tab bar above a frame.
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionTabWidgetFrame>
#include <QTabBar>

#include "platform/qt/qt_control_peers.h"

namespace platform {
namespace {

constexpr int kFrame = 4;

// Requests a tab change instead of showing the tab, since the change may be refused.
class RequestingTabBar final : public QTabBar {
 public:
  explicit RequestingTabBar(QWidget* parent) : QTabBar(parent) {
    setDrawBase(false);
    setUsesScrollButtons(true);
    setExpanding(false);
  }

  TabEvents* events = nullptr;

 private:
  void Request(int index) {
    if (events != nullptr && index >= 0 && index < count()) events->OnTabWanted(index);
  }
  void mousePressEvent(QMouseEvent* event) override {
    if (event->button() == Qt::LeftButton) Request(tabAt(event->position().toPoint()));
  }
  void mouseReleaseEvent(QMouseEvent* /*event*/) override {}
  void wheelEvent(QWheelEvent* event) override { event->ignore(); }
  void keyPressEvent(QKeyEvent* event) override {
    switch (event->key()) {
      case Qt::Key_Left:
        return Request(currentIndex() - 1);
      case Qt::Key_Right:
        return Request(currentIndex() + 1);
      case Qt::Key_Home:
        return Request(0);
      case Qt::Key_End:
        return Request(count() - 1);
      default:
        event->ignore();
    }
  }
  bool event(QEvent* event) override {
    // A tab's mnemonic is a shortcut.
    if (event->type() == QEvent::Shortcut) {
      const auto* shortcut = static_cast<QShortcutEvent*>(event);
      for (int index = 0; index < count(); ++index) {
        if (QKeySequence::mnemonic(tabText(index)) == shortcut->key()) Request(index);
      }
      return true;
    }
    return QTabBar::event(event);
  }
};

class TabFrame final : public QWidget {
 public:
  explicit TabFrame(QWidget* parent) : QWidget(parent) { setFocusProxy(bar); }

  RequestingTabBar* const bar = new RequestingTabBar(this);

 private:
  void resizeEvent(QResizeEvent* /*event*/) override {
    bar->setGeometry(0, 0, width(), bar->sizeHint().height());
  }
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    QStyleOptionTabWidgetFrame option;
    option.initFrom(this);
    option.lineWidth = style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, this);
    option.tabBarSize = bar->size();
    const int overlap = style()->pixelMetric(QStyle::PM_TabBarBaseOverlap, nullptr, bar);
    option.rect = rect().adjusted(0, bar->height() - overlap, 0, 0);
    style()->drawPrimitive(QStyle::PE_FrameTabWidget, &option, &painter, this);
  }
};

class QtTabPeer final : public QtControlPeer<TabPeer> {
 public:
  QtTabPeer(TabFrame* frame, const PeerOrigin& origin, TabEvents& events)
      : QtControlPeer(frame, origin), frame_(frame) {
    frame->bar->setFocusPolicy(FocusPolicyOf(origin.style));
    frame->bar->events = &events;
  }
  ~QtTabPeer() override {
    if (frame_ != nullptr) frame_->bar->events = nullptr;
  }

  void SetText(const std::wstring& /*text*/) override {}
  void SetFont(const LOGFONTW& font) override {
    QtPeer::SetFont(font);
    Arrange();
  }
  void Insert(int index, const std::wstring& text) override {
    frame_->bar->insertTab(index, QString::fromStdWString(text));
    Arrange();
  }
  void SetTabText(int index, const std::wstring& text) override {
    frame_->bar->setTabText(index, QString::fromStdWString(text));
    Arrange();
  }
  void Clear() override {
    while (frame_->bar->count() > 0)
      frame_->bar->removeTab(0);
  }
  void Select(int index) override { frame_->bar->setCurrentIndex(index); }
  RECT Margins() const override {
    return {kFrame, frame_->bar->sizeHint().height() + kFrame, kFrame, kFrame};
  }

 private:
  void Arrange() {
    frame_->bar->setGeometry(0, 0, frame_->width(), frame_->bar->sizeHint().height());
    frame_->update();
  }

  QPointer<TabFrame> frame_;
};

}  // namespace

std::unique_ptr<TabPeer> QtControlPeers::MakeTab(const PeerOrigin& origin, TabEvents& events) {
  return std::make_unique<QtTabPeer>(new TabFrame(WidgetOf(origin.parent)), origin, events);
}

}  // namespace platform
