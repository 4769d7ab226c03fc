// Up-down controls: two buttons with arrows.
#include <commctrl.h>

#include <QKeyEvent>
#include <QToolButton>

#include "platform/qt/qt_control_peers.h"

namespace platform {
namespace {

constexpr int kRepeatDelay = 400;     // milliseconds
constexpr int kRepeatInterval = 100;  // milliseconds

class Arrows final : public QWidget {
 public:
  Arrows(QWidget* parent, bool horizontal) : QWidget(parent), horizontal_(horizontal) {
    Prepare(*up, horizontal ? Qt::RightArrow : Qt::UpArrow);
    Prepare(*down, horizontal ? Qt::LeftArrow : Qt::DownArrow);
  }

  QToolButton* const up = new QToolButton(this);
  QToolButton* const down = new QToolButton(this);

 private:
  static void Prepare(QToolButton& button, Qt::ArrowType arrow) {
    button.setArrowType(arrow);
    button.setFocusPolicy(Qt::NoFocus);
    button.setAutoRepeat(true);
    button.setAutoRepeatDelay(kRepeatDelay);
    button.setAutoRepeatInterval(kRepeatInterval);
  }
  void resizeEvent(QResizeEvent* /*event*/) override {
    if (horizontal_) {
      down->setGeometry(0, 0, width() / 2, height());
      up->setGeometry(width() / 2, 0, width() - width() / 2, height());
    } else {
      up->setGeometry(0, 0, width(), height() / 2);
      down->setGeometry(0, height() / 2, width(), height() - height() / 2);
    }
  }

  const bool horizontal_;
};

// Receives the keys of the buddy before the buddy does.
class KeyFilter final : public QObject {
 public:
  explicit KeyFilter(UpDownEvents& events) : events_(events) {}

  void Watch(QWidget* buddy) {
    if (buddy_ != nullptr) buddy_->removeEventFilter(this);
    buddy_ = buddy;
    if (buddy != nullptr) buddy->installEventFilter(this);
  }

 private:
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() != QEvent::KeyPress) return false;
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key != Qt::Key_Up && key != Qt::Key_Down) return false;
    events_.OnStep(key == Qt::Key_Up);
    return true;
  }

  UpDownEvents& events_;
  QPointer<QWidget> buddy_;
};

class QtUpDownPeer final : public QtControlPeer<UpDownPeer> {
 public:
  QtUpDownPeer(Arrows* arrows, const PeerOrigin& origin, UpDownEvents& events)
      : QtControlPeer(arrows, origin), keys_(events) {
    const auto step = [&events](bool up) { return [&events, up] { events.OnStep(up); }; };
    QObject::connect(arrows->up, &QToolButton::clicked, Context(), step(true));
    QObject::connect(arrows->down, &QToolButton::clicked, Context(), step(false));
    // Above the edit control beside it.
    arrows->raise();
  }

  void SetText(const std::wstring& /*text*/) override {}
  void TakeArrowKeysOf(WindowPeer* buddy) override { keys_.Watch(WidgetOf(buddy)); }

 private:
  KeyFilter keys_;
};

}  // namespace

std::unique_ptr<UpDownPeer> QtControlPeers::MakeUpDown(const PeerOrigin& origin,
                                                       UpDownEvents& events) {
  const bool horizontal = (origin.style & UDS_HORZ) != 0;
  return std::make_unique<QtUpDownPeer>(new Arrows(WidgetOf(origin.parent), horizontal), origin,
                                        events);
}

}  // namespace platform
