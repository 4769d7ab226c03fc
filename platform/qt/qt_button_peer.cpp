// Buttons as Qt widgets. Unlike Qt's own buttons, they change their state only when the control
// sets it, and arrow keys do not move the focus: in dialogs the dialog handles arrow keys first,
// elsewhere they have no meaning.
#include <QButtonGroup>
#include <QCheckBox>
#include <QEvent>
#include <QGroupBox>
#include <QKeyEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QStylePainter>

#include "platform/qt/qt_control_peers.h"
#include "platform/qt/qt_dialog_keys.h"

namespace platform {
namespace {

bool IsArrow(int key) {
  return key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Up || key == Qt::Key_Down;
}

template <class Base>
class Passive final : public Base {
 public:
  using Base::Base;

 private:
  void nextCheckState() override {}
  void keyPressEvent(QKeyEvent* event) override {
    if (IsArrow(event->key())) {
      event->ignore();
    } else {
      Base::keyPressEvent(event);
    }
  }
};

QAbstractButton* MakeWidget(QWidget* parent, DWORD style) {
  switch (style & BS_TYPEMASK) {
    case BS_CHECKBOX:
    case BS_AUTOCHECKBOX:
      return new Passive<QCheckBox>(parent);
    case BS_RADIOBUTTON:
    case BS_AUTORADIOBUTTON:
      return new Passive<QRadioButton>(parent);
    default:
      return new QPushButton(parent);
  }
}

class QtButtonPeer final : public QtControlPeer<ButtonPeer> {
 public:
  QtButtonPeer(QAbstractButton* button, const PeerOrigin& origin, ButtonEvents& events,
               ButtonPeer* sameGroup)
      : QtControlPeer(button, origin), button_(button) {
    button->setFocusPolicy(FocusPolicyOf(origin.style));
    if (qobject_cast<QRadioButton*>(button) != nullptr) JoinGroup(sameGroup);
    if (auto* push = Push()) push->setAutoDefault(false);
    SetDefault((origin.style & BS_TYPEMASK) == BS_DEFPUSHBUTTON);
    QObject::connect(button, &QAbstractButton::clicked, Context(),
                     [&events] { events.OnClicked(); });
  }

  void SetText(const std::wstring& text) override {
    button_->setText(QString::fromStdWString(text));
    if (!IsInDialog(*button_)) button_->setShortcut({});
  }
  void SetChecked(bool checked) override {
    // The control decides which button of a group is checked, not Qt's group.
    QButtonGroup* group = button_->group();
    if (group != nullptr) group->setExclusive(false);
    button_->setChecked(checked);
    if (group != nullptr) group->setExclusive(true);
  }
  void SetDefault(bool isDefault) override {
    if (auto* push = Push()) push->setDefault(isDefault);
  }

 private:
  QPushButton* Push() const { return qobject_cast<QPushButton*>(button_.data()); }

  // Qt's group is used only for Tab, which visits one radio button of a group.
  void JoinGroup(ButtonPeer* sameGroup) {
    const auto* other = qobject_cast<QAbstractButton*>(WidgetOf(sameGroup));
    QButtonGroup* group = other != nullptr ? other->group() : nullptr;
    if (group == nullptr) group = new QButtonGroup(button_->parent());
    group->addButton(button_);
  }

  QPointer<QAbstractButton> button_;
};

// A group box with its title in the upper line of its frame, as dialog templates expect. The style
// would draw the title above a smaller frame.
class Frame final : public QGroupBox {
 public:
  explicit Frame(QWidget* parent) : QGroupBox(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    lower();
  }

  ButtonEvents* events = nullptr;

 private:
  static constexpr int kTitleLeft = 8;
  static constexpr int kTitleMargin = 3;
  static constexpr int kCorner = 2;
  static constexpr int kFrameDarkness = 115;  // in per cent, as QColor::darker takes it

  QRect TitleArea() const {
    const QSize size = fontMetrics().size(Qt::TextShowMnemonic, title());
    return {QPoint(kTitleLeft, 0), size + QSize(2 * kTitleMargin, 0)};
  }

  void paintEvent(QPaintEvent* /*event*/) override {
    QStylePainter painter(this);
    QRect frame = rect();
    if (!title().isEmpty()) {
      const QRect area = TitleArea();
      const auto state = isEnabled() ? QPalette::Active : QPalette::Disabled;
      painter.setPen(palette().color(state, QPalette::WindowText));
      painter.drawText(area, Qt::AlignCenter | Qt::TextShowMnemonic, title());
      painter.setClipRegion(QRegion(frame).subtracted(area));
    }
    frame.setTop(fontMetrics().height() / 2);
    painter.setPen(palette().color(QPalette::Midlight).darker(kFrameDarkness));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.drawRoundedRect(QRectF(frame).adjusted(0.5, 0.5, -0.5, -0.5), kCorner, kCorner);
  }

  bool event(QEvent* event) override {
    if (event->type() != QEvent::Shortcut) return QGroupBox::event(event);
    if (events != nullptr && IsInDialog(*this)) events->OnMnemonic();
    return true;
  }
};

class QtGroupBoxPeer final : public QtControlPeer<ButtonPeer> {
 public:
  QtGroupBoxPeer(Frame* frame, const PeerOrigin& origin, ButtonEvents& events)
      : QtControlPeer(frame, origin), frame_(frame) {
    frame->events = &events;
  }
  ~QtGroupBoxPeer() override {
    if (frame_ != nullptr) frame_->events = nullptr;
  }

  void SetText(const std::wstring& text) override {
    frame_->setTitle(QString::fromStdWString(text));
  }
  void SetChecked(bool /*checked*/) override {}
  void SetDefault(bool /*isDefault*/) override {}

 private:
  QPointer<Frame> frame_;
};

}  // namespace

std::unique_ptr<ButtonPeer> QtControlPeers::MakeButton(const PeerOrigin& origin,
                                                       ButtonEvents& events,
                                                       ButtonPeer* sameGroup) {
  QWidget* parent = WidgetOf(origin.parent);
  if ((origin.style & BS_TYPEMASK) == BS_GROUPBOX) {
    return std::make_unique<QtGroupBoxPeer>(new Frame(parent), origin, events);
  }
  return std::make_unique<QtButtonPeer>(MakeWidget(parent, origin.style), origin, events,
                                        sameGroup);
}

}  // namespace platform
