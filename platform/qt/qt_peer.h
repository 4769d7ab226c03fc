// A Qt widget as the peer of a window: the part that all kinds of windows share. Each kind derives
// from QtPeer<its interface>, passes its widget and overrides what differs, mostly SetText.
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

// The font in which a window with that logical font shows text. An empty face and "MS Shell Dlg"
// mean the desktop's own font (the rule is in qt_font.cpp).
QFont QtFont(const LOGFONTW& font);

// Hides the widget and destroys it once none of its events can be in progress.
void RetireWidget(QWidget* widget);
// Destroys the retired widgets. Called by the event loop when no event is being handled.
void EndRetiredWidgets();

// The property that holds the widget's HWND, as an unsigned number.
inline constexpr const char* kHandleProperty = "windowHandle";

class QtWidgetHolder {
 public:
  virtual ~QtWidgetHolder() = default;
  virtual QWidget* Widget() const = 0;
};

// Returns the widget of any peer of this module; null for null.
QWidget* WidgetOf(WindowPeer* peer);

// Owns a widget and reports its events to the window.
class QtPeerCore final : public QObject {
 public:
  QtPeerCore(QWidget* widget, WindowEvents& events);
  ~QtPeerCore() override;

  QWidget* Widget() const { return widget_; }
  WindowEvents& Events() const { return events_; }
  // The id becomes the widget's object name, in decimal; the handle its property kHandleProperty.
  void SetIdentity(HWND window, UINT_PTR id);
  void SetBounds(const RECT& bounds);
  void SetTitle(const std::wstring& title);
  void SetShown(bool shown);
  void ShowInactive();
  // A disabled top-level window ignores input, but it and its controls look enabled.
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
  // Invalidated and not yet painted.
  QRegion damaged_;
  bool isSettingBounds_ = false;
  std::unique_ptr<QObject> inputBlock_;
};

template <class Interface>
class QtPeer : public Interface, public QtWidgetHolder {
 public:
  void SetIdentity(HWND window, UINT_PTR id) override { core_.SetIdentity(window, id); }
  void SetText(const std::wstring& text) override { core_.SetTitle(text); }
  void SetBounds(const RECT& bounds) override { core_.SetBounds(bounds); }
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
  void SetCaret(const std::optional<RECT>& /*bounds*/) override {}

  QWidget* Widget() const override { return core_.Widget(); }

 protected:
  // Takes ownership of the new widget.
  QtPeer(QWidget* widget, WindowEvents& events) : core_(widget, events) {}

 private:
  QtPeerCore core_;
};

}  // namespace platform
