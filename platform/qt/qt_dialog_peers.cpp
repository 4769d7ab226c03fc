#include "platform/qt/qt_dialog_peers.h"

#include "platform/qt/qt_dialog_keys.h"
#include "platform/qt/qt_painted_widget.h"
#include "platform/qt/qt_peer.h"
#include "platform/qt/qt_screen_bounds.h"

namespace platform {
namespace {

class QtDialogPeer final : public QtPeer<DialogPeer> {
 public:
  QtDialogPeer(QtPaintedWidget* widget, WindowEvents& events, DialogEvents& dialogEvents)
      : QtPeer(widget, events), keys_(*widget, dialogEvents) {}
  ~QtDialogPeer() override {
    if (Widget() != nullptr) static_cast<QtPaintedWidget*>(Widget())->Forget();
  }
  QtDialogPeer(const QtDialogPeer&) = delete;
  QtDialogPeer& operator=(const QtDialogPeer&) = delete;

  void SetBounds(const RECT& bounds) override {
    Widget()->setFixedSize(QtRect(bounds).size().boundedTo(LargestWindowSize()));
    QtPeer::SetBounds(bounds);
  }
  void SetModal() override {
    if (Widget()->parentWidget() != nullptr) Widget()->setWindowModality(Qt::WindowModal);
  }
  void FocusByTab(WindowPeer& control, bool forward) override {
    const auto reason = forward ? Qt::TabFocusReason : Qt::BacktabFocusReason;
    WidgetOf(&control)->setFocus(reason);
  }

 private:
  QtDialogKeys keys_;
};

constexpr Qt::WindowFlags kDialogFlags = Qt::Dialog | Qt::CustomizeWindowHint |
                                         Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                                         Qt::WindowCloseButtonHint;

}  // namespace

std::unique_ptr<DialogPeer> QtDialogPeers::MakeDialog(WindowEvents& events,
                                                      DialogEvents& dialogEvents,
                                                      WindowPeer* owner) {
  auto* widget = new QtPaintedWidget(WidgetOf(owner), kDialogFlags, events);
  return std::make_unique<QtDialogPeer>(widget, events, dialogEvents);
}

}  // namespace platform
