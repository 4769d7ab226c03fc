// Static controls as Qt labels that draw their text as Windows does.
#include <QEvent>
#include <QKeySequence>
#include <QLabel>
#include <QPainter>
#include <QShortcutEvent>
#include <QStyle>

#include "platform/qt/qt_canvas.h"
#include "platform/qt/qt_control_peers.h"
#include "platform/qt/qt_dialog_keys.h"

namespace platform {
namespace {

Qt::Alignment AlignmentOf(DWORD style) {
  const Qt::Alignment vertical = (style & SS_CENTERIMAGE) != 0 ? Qt::AlignVCenter : Qt::AlignTop;
  switch (style & SS_TYPEMASK) {
    case SS_CENTER:
      return Qt::AlignHCenter | vertical;
    case SS_RIGHT:
      return Qt::AlignRight | vertical;
    case SS_ICON:
    case SS_BITMAP:
      return (style & SS_CENTERIMAGE) != 0 ? Qt::AlignCenter : Qt::AlignLeft | Qt::AlignTop;
    default:
      return Qt::AlignLeft | vertical;
  }
}

class Label final : public QLabel {
 public:
  Label(QWidget* parent, DWORD style) : QLabel(parent), style_(style) {
    setAttribute(Qt::WA_TransparentForMouseEvents, (style & SS_NOTIFY) == 0);
    setTextFormat(Qt::PlainText);
    setAlignment(AlignmentOf(style));
    setWordWrap(Wraps());
    if ((style & SS_TYPEMASK) == SS_ETCHEDHORZ) {
      setFrameStyle(QFrame::HLine | QFrame::Sunken);
    }
  }

  void Show(const QString& text) {
    if (shortcut_ != 0) releaseShortcut(shortcut_);
    setText(text);
    const QKeySequence key =
        HasPrefix() && IsInDialog(*this) ? QKeySequence::mnemonic(text) : QKeySequence();
    shortcut_ = key.isEmpty() ? 0 : grabShortcut(key);
  }

  StaticEvents* events = nullptr;

 private:
  bool Wraps() const {
    const DWORD kind = style_ & SS_TYPEMASK;
    return (kind == SS_LEFT || kind == SS_CENTER || kind == SS_RIGHT) &&
           (style_ & SS_CENTERIMAGE) == 0;
  }
  bool HasPrefix() const { return (style_ & SS_NOPREFIX) == 0; }

  bool event(QEvent* event) override {
    if (event->type() != QEvent::Shortcut) return QLabel::event(event);
    if (events != nullptr) events->OnMnemonic();
    return true;
  }

  void paintEvent(QPaintEvent* event) override {
    if (text().isEmpty()) {
      QLabel::paintEvent(event);
      return;
    }
    // Without the label's margins, and with "&" as an underline although the label has no buddy.
    QPainter painter(this);
    int flags = static_cast<int>(alignment()) | Qt::TextExpandTabs;
    if (Wraps()) flags |= Qt::TextWordWrap;
    if (HasPrefix()) flags |= Qt::TextShowMnemonic;
    style()->drawItemText(&painter, rect(), flags, palette(), isEnabled(), text(),
                          foregroundRole());
  }

  const DWORD style_;
  int shortcut_ = 0;
};

class QtStaticPeer final : public QtControlPeer<StaticPeer> {
 public:
  QtStaticPeer(Label* label, const PeerOrigin& origin, StaticEvents& events)
      : QtControlPeer(label, origin), label_(label), kind_(origin.style & SS_TYPEMASK) {
    label->events = &events;
  }
  ~QtStaticPeer() override {
    if (label_ != nullptr) label_->events = nullptr;
  }

  void SetText(const std::wstring& text) override {
    // The other kinds of static controls show no text.
    const bool isText = kind_ != SS_ICON && kind_ != SS_BITMAP && kind_ != SS_ETCHEDHORZ;
    if (isText) label_->Show(QString::fromStdWString(text));
  }
  void SetIcon(std::shared_ptr<const IconImages> icon) override {
    if (icon == nullptr) {
      label_->clear();
      return;
    }
    label_->setPixmap(PixmapOf(*icon, label_->devicePixelRatio()));
  }
  void SetPicture(const Canvas* bitmap) override {
    const QImage* pixels = bitmap != nullptr ? PixelsOf(*bitmap) : nullptr;
    if (pixels == nullptr) {
      label_->clear();
    } else {
      label_->setPixmap(QPixmap::fromImage(pixels->copy()));
    }
  }

 private:
  QPointer<Label> label_;
  const DWORD kind_;
};

}  // namespace

std::unique_ptr<StaticPeer> QtControlPeers::MakeStatic(const PeerOrigin& origin,
                                                       StaticEvents& events) {
  return std::make_unique<QtStaticPeer>(new Label(WidgetOf(origin.parent), origin.style), origin,
                                        events);
}

}  // namespace platform
