#include "platform/qt/qt_peer.h"

#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <vector>

#include "platform/qt/qt_desktop_loss.h"
#include "platform/qt/qt_screen_bounds.h"

namespace platform {
namespace {

std::vector<QPointer<QWidget>>& RetiredWidgets() {
  static auto& widgets = *new std::vector<QPointer<QWidget>>;
  return widgets;
}

bool IsInput(QEvent::Type type) {
  switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::Close:
      return true;
    default:
      return false;
  }
}

// Keeps the user's input from a top-level window and all that is in it. Filters the events of each
// widget: an event filter on the application works only on the first thread that used the toolkit.
class InputBlock final : public QObject {
 public:
  explicit InputBlock(QWidget* window) {
    window->installEventFilter(this);
    for (QWidget* each : window->findChildren<QWidget*>()) {
      if (each->window() == window) each->installEventFilter(this);
    }
  }

 private:
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (!IsInput(event->type())) return false;
    event->ignore();
    return true;
  }
};

}  // namespace

QRect QtRect(const RECT& rect) {
  return QRect(QPoint(rect.left, rect.top), QPoint(rect.right - 1, rect.bottom - 1));
}

RECT WinRect(const QRect& rect) {
  return {rect.left(), rect.top(), rect.right() + 1, rect.bottom() + 1};
}

void RetireWidget(QWidget* widget) {
  if (widget == nullptr) return;
  widget->hide();
  RetiredWidgets().emplace_back(widget);
}

void EndRetiredWidgets() {
  // Destroying a widget may retire more. A widget that was destroyed with its parent is null by
  // now.
  while (!RetiredWidgets().empty()) {
    const QPointer<QWidget> widget = RetiredWidgets().back();
    RetiredWidgets().pop_back();
    delete widget.data();
  }
}

QWidget* WidgetOf(WindowPeer* peer) {
  const auto* holder = dynamic_cast<QtWidgetHolder*>(peer);
  return holder != nullptr ? holder->Widget() : nullptr;
}

QtPeerCore::QtPeerCore(QWidget* widget, WindowEvents& events) : widget_(widget), events_(events) {
  // Hidden explicitly: a child that was never hidden is shown with its parent.
  widget->hide();
  widget->installEventFilter(this);
}

QtPeerCore::~QtPeerCore() {
  if (widget_ == nullptr) return;
  widget_->removeEventFilter(this);
  RetireWidget(widget_);
}

void QtPeerCore::SetIdentity(HWND window, UINT_PTR id) {
  widget_->setProperty(kHandleProperty, qulonglong{reinterpret_cast<UINT_PTR>(window)});
  if (!widget_->isWindow()) widget_->setObjectName(QString::number(qulonglong{id}));
}

void QtPeerCore::SetBounds(const RECT& bounds) {
  QRect bounded = QtRect(bounds);
  if (widget_->isWindow()) bounded.setSize(bounded.size().boundedTo(LargestWindowSize()));
  isSettingBounds_ = true;
  widget_->setGeometry(bounded);
  isSettingBounds_ = false;
}

void QtPeerCore::Focus() {
  widget_->setFocus(Qt::OtherFocusReason);
}

void QtPeerCore::Activate() {
  if (!widget_->isVisible()) return;
  widget_->raise();
  widget_->activateWindow();
}

void QtPeerCore::SetTitle(const std::wstring& title) {
  SurvivesUse([&] { widget_->setWindowTitle(QString::fromStdWString(title)); });
}

void QtPeerCore::SetShown(bool shown) {
  SurvivesUse([&] { widget_->setVisible(shown); });
}

void QtPeerCore::ShowInactive() {
  widget_->setAttribute(Qt::WA_ShowWithoutActivating, true);
  SetShown(true);
  widget_->setAttribute(Qt::WA_ShowWithoutActivating, false);
}

void QtPeerCore::SetEnabled(bool enabled) {
  if (!widget_->isWindow()) {
    widget_->setEnabled(enabled);
  } else if (enabled) {
    inputBlock_.reset();
  } else if (inputBlock_ == nullptr) {
    inputBlock_ = std::make_unique<InputBlock>(widget_);
  }
}

void QtPeerCore::Invalidate(const QRect& area) {
  damaged_ += area;
  widget_->update(area);
}

void QtPeerCore::PaintNow() {
  // Not during its own paint event.
  if (!widget_->paintingActive()) widget_->repaint(damaged_);
}

bool QtPeerCore::eventFilter(QObject* /*watched*/, QEvent* event) {
  switch (event->type()) {
    case QEvent::Paint:
      damaged_ = {};
      return false;
    case QEvent::Show:
      damaged_ = widget_->rect();
      return false;
    case QEvent::Close:
      event->ignore();
      events_.OnCloseRequested();
      return true;
    case QEvent::WindowActivate:
    case QEvent::WindowDeactivate:
      // Qt sends this event to every widget of the window.
      if (widget_->isWindow()) events_.OnActivationChanged(event->type() == QEvent::WindowActivate);
      return false;
    case QEvent::FocusIn:
    case QEvent::FocusOut:
      events_.OnFocusChanged(event->type() == QEvent::FocusIn);
      return false;
    case QEvent::Move:
    case QEvent::Resize:
      return OnMoved();
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
      // Some disabled widgets consume mouse events, which belong to their parent.
      if (widget_->isEnabled()) return false;
      event->ignore();
      return true;
    case QEvent::KeyPress:
      if (static_cast<QKeyEvent*>(event)->key() != Qt::Key_F1) return false;
      events_.OnHelpRequested();
      return true;
    default:
      return false;
  }
}

bool QtPeerCore::OnMoved() {
  if (!isSettingBounds_ && widget_->isWindow())
    events_.OnBoundsChanged(WinRect(widget_->geometry()));
  return false;
}

}  // namespace platform
