#include "platform/qt/qt_balloon.h"

#include <shellapi.h>

#include <QFrame>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QScreen>
#include <QStyle>
#include <QToolButton>
#include <QToolTip>
#include <algorithm>

#include "platform/qt/qt_peer.h"

namespace platform {
namespace {

constexpr int kWidestText = 320;
constexpr int kIconSize = 16;
constexpr int kMargin = 10;
constexpr int kGap = 8;
// The distance from the icon and from the edges of the screen.
constexpr int kDistance = 4;

// Words longer than this may be broken anywhere.
constexpr int kLongestWord = 24;

// Inserts zero-width spaces into long words: the label would cut off a word wider than a line.
QString Breakable(const std::wstring& text) {
  constexpr QChar kBreak(0x200B);
  QString breakable;
  int length = 0;
  for (const QChar each : QString::fromStdWString(text)) {
    length = each.isSpace() ? 0 : length + 1;
    if (length > kLongestWord && !each.isLowSurrogate()) breakable += kBreak;
    breakable += each;
  }
  return breakable;
}

QStyle::StandardPixmap StandardIconOf(DWORD icon) {
  switch (icon) {
    case NIIF_WARNING:
      return QStyle::SP_MessageBoxWarning;
    case NIIF_ERROR:
      return QStyle::SP_MessageBoxCritical;
    default:
      return QStyle::SP_MessageBoxInformation;
  }
}

// Returns the upper left corner that puts the balloon above or below the icon, on the icon's
// screen.
QPoint PositionNextTo(const QRect& icon, QSize size) {
  const QScreen* screen = QGuiApplication::screenAt(icon.center());
  if (screen == nullptr) screen = QGuiApplication::primaryScreen();
  const QRect available =
      screen->availableGeometry().adjusted(kDistance, kDistance, -kDistance, -kDistance);
  const bool isAbove = icon.center().y() > screen->geometry().center().y();
  const int wantedTop =
      isAbove ? icon.top() - kDistance - size.height() : icon.bottom() + kDistance;
  const int wantedLeft = icon.center().x() - size.width() / 2;
  const auto within = [](int wanted, int first, int last) {
    return std::max(first, std::min(wanted, last));
  };
  return {within(wantedLeft, available.left(), available.right() + 1 - size.width()),
          within(wantedTop, available.top(), available.bottom() + 1 - size.height())};
}

class BalloonWidget final : public QFrame {
 public:
  BalloonWidget(const TrayBalloon& balloon, std::function<void(BalloonEnd)> onEnd)
      : QFrame(nullptr, Qt::ToolTip | Qt::WindowStaysOnTopHint), onEnd_(std::move(onEnd)) {
    setAttribute(Qt::WA_ShowWithoutActivating);
    setPalette(QToolTip::palette());
    setBackgroundRole(QPalette::ToolTipBase);
    setAutoFillBackground(true);
    setForegroundRole(QPalette::Mid);  // the line of the frame
    setFrameShape(QFrame::Box);
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->setHorizontalSpacing(kGap);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    if (balloon.icon != NIIF_NONE) layout->addWidget(Icon(balloon.icon), 0, 0, Qt::AlignTop);
    layout->addWidget(CloseButton(), 0, 2, Qt::AlignTop | Qt::AlignRight);
    layout->setColumnStretch(1, 1);
    if (balloon.title.empty()) {
      layout->addWidget(Text(balloon.text, font()), 0, 1, Qt::AlignTop);
      return;
    }
    QFont bold = font();
    bold.setBold(true);
    layout->addWidget(Text(balloon.title, bold), 0, 1, Qt::AlignTop);
    layout->addWidget(Text(balloon.text, font()), 1, 1, 1, 2);
  }

 private:
  QLabel* Icon(DWORD icon) {
    auto* label = new QLabel(this);
    label->setPixmap(style()
                         ->standardIcon(StandardIconOf(icon))
                         .pixmap(QSize(kIconSize, kIconSize), devicePixelRatio()));
    return label;
  }

  QLabel* Text(const std::wstring& text, const QFont& font) {
    auto* label = new QLabel(this);
    label->setTextFormat(Qt::PlainText);
    label->setFont(font);
    label->setText(Breakable(text));
    const int width = label->sizeHint().width();
    label->setWordWrap(width > kWidestText);
    if (width > kWidestText) label->setFixedSize(kWidestText, label->heightForWidth(kWidestText));
    return label;
  }

  QToolButton* CloseButton() {
    auto* button = new QToolButton(this);
    button->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    button->setIconSize({kIconSize, kIconSize});
    button->setAutoRaise(true);
    connect(button, &QToolButton::clicked, this, [this] { onEnd_(BalloonEnd::kClosed); });
    return button;
  }

  void mouseReleaseEvent(QMouseEvent* event) override {
    if (event->button() == Qt::LeftButton) onEnd_(BalloonEnd::kClicked);
  }

  const std::function<void(BalloonEnd)> onEnd_;
};

}  // namespace

QtBalloon::QtBalloon(const TrayBalloon& balloon, const QRect& icon,
                     std::function<void(BalloonEnd)> onEnd)
    : widget_(new BalloonWidget(balloon, onEnd)) {
  widget_->ensurePolished();
  widget_->adjustSize();
  widget_->move(PositionNextTo(icon, widget_->sizeHint()));
  widget_->show();
  time_.setSingleShot(true);
  time_.callOnTimeout([onEnd = std::move(onEnd)] { onEnd(BalloonEnd::kTimedOut); });
  time_.start(balloon.duration);
}

QtBalloon::~QtBalloon() {
  RetireWidget(widget_);
}

}  // namespace platform
