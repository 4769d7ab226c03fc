// A Qt widget as the peer of a window: what all kinds of windows share. A kind derives from
// QtPeer<its interface>, hands over its widget and overrides what is special, SetText mostly.
#pragma once

#include <QObject>
#include <QPointer>
#include <QRegion>
#include <QWidget>
#include <memory>

#include "platform/user/window_peer.h"

namespace platform {

QRect QtRect(const RECT& rect);
RECT WinRect(const QRect& rect);

// The font that a window with that logical font shows. Empty face and "MS Shell Dlg" mean the
// desktop's own font (qt_graphics has the rule).
QFont QtFont(const LOGFONTW& font);

// Ends a widget as soon as no event of it can be under way any more.
void RetireWidget(QWidget* widget);
// Ends what has been retired. Called by the event loop when no event is being handled.
void EndRetiredWidgets();

// A widget's window, as an unsigned number.
inline constexpr const char* kHandleProperty = "windowHandle";

class QtWidgetHolder {
 public:
  virtual ~QtWidgetHolder() = default;
  virtual QWidget* Widget() const = 0;
};

// The widget of any peer of this module; null of null.
QWidget* WidgetOf(WindowPeer* peer);

// Owns a widget and tells the window what happens to it.
class QtPeerCore final : public QObject {
 public:
  QtPeerCore(QWidget* widget, WindowEvents& events);
  ~QtPeerCore() override;

  QWidget* Widget() const { return widget_; }
  WindowEvents& Events() const { return events_; }
  // The number becomes the widget's object name, in decimal; the handle its property
  // kHandleProperty.
  void SetIdentity(HWND window, UINT_PTR id);
  void SetBounds(const RECT& place);
  void SetTitle(const std::wstring& title);
  void SetShown(bool shown);
  void ShowInactive();
  // A disabled top-level window takes no input, but looks the same, and so do its controls.
  void SetEnabled(bool enabled);
  void Focus();
  void Activate();
  void Invalidate(const QRect& area);
  void PaintNow();

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool OnMoved();

  QPointer<QWidget> widget_;
  WindowEvents& events_;
  // Not painted yet.
  QRegion damaged_;
  bool placing_ = false;
  std::unique_ptr<QObject> inputBlock_;
};

template <class Interface>
class QtPeer : public Interface, public QtWidgetHolder {
 public:
  void SetIdentity(HWND window, UINT_PTR id) override { core_.SetIdentity(window, id); }
  void SetText(const std::wstring& text) override { core_.SetTitle(text); }
  void SetBounds(const RECT& place) override { core_.SetBounds(place); }
  void SetShown(bool shown) override { core_.SetShown(shown); }
  void ShowInactive() override { core_.ShowInactive(); }
  void SetEnabled(bool enabled) override { core_.SetEnabled(enabled); }
  void SetFont(const LOGFONTW& font) override { Widget()->setFont(QtFont(font)); }
  void Focus() override { core_.Focus(); }
  void Activate() override { core_.Activate(); }
  void Invalidate(const RECT& area) override { core_.Invalidate(QtRect(area)); }
  void PaintNow() override { core_.PaintNow(); }
  void SetPointer(PointerShape /*shape*/) override {}
  bool Draw(const std::function<void(Canvas&)>& /*work*/) override { return false; }
  void SetScrollBar(int /*bar*/, const ScrollBarView& /*view*/) override {}
  void SetCaret(const std::optional<RECT>& /*place*/) override {}

  QWidget* Widget() const override { return core_.Widget(); }

 protected:
  // The widget is new and belongs to the peer from now on.
  QtPeer(QWidget* widget, WindowEvents& events) : core_(widget, events) {}

 private:
  QtPeerCore core_;
};

}  // namespace platform
