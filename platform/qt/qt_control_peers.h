// Controls as Qt widgets, each kind made in the source named for it (qt_button_peer.cpp). Lives on
// the window thread.
#pragma once

#include <QObject>
#include <QPixmap>
#include <QWidget>

#include "platform/controls/control_peers.h"
#include "platform/qt/qt_peer.h"

namespace platform {

class QtControlPeers final : public ControlPeers {
 public:
  std::unique_ptr<StaticPeer> MakeStatic(const PeerOrigin& origin, StaticEvents& events) override;
  std::unique_ptr<ButtonPeer> MakeButton(const PeerOrigin& origin, ButtonEvents& events,
                                         ButtonPeer* sameGroup) override;
  std::unique_ptr<EditPeer> MakeEdit(const PeerOrigin& origin, EditEvents& events) override;
  std::unique_ptr<ComboBoxPeer> MakeComboBox(const PeerOrigin& origin,
                                             ComboBoxEvents& events) override;
  std::unique_ptr<TabPeer> MakeTab(const PeerOrigin& origin, TabEvents& events) override;
  std::unique_ptr<ListViewPeer> MakeListView(const PeerOrigin& origin,
                                             const ListViewContent& content,
                                             ListViewEvents& events) override;
  std::unique_ptr<UpDownPeer> MakeUpDown(const PeerOrigin& origin, UpDownEvents& events) override;
  std::unique_ptr<DatePickerPeer> MakeDatePicker(const PeerOrigin& origin,
                                                 DatePickerEvents& events) override;
};

// How a control takes the keyboard: all do by a click, those with WS_TABSTOP by Tab too.
Qt::FocusPolicy FocusPolicyOf(DWORD style);

// A position in a text, in characters of the layer and in units of Qt, which counts the characters
// beyond U+FFFF twice.
int QtPosition(const QString& text, int position);
int LayerPosition(const QString& text, int position);

// A peer whose widget tells it things. What it connects with Context() as the receiver is
// disconnected before the widget ends, which may be long after the peer.
template <class Interface>
class QtControlPeer : public QtPeer<Interface> {
 protected:
  QtControlPeer(QWidget* widget, const PeerOrigin& origin)
      : QtPeer<Interface>(widget, origin.events) {
    // Else it would have the shape that the window around it has at the moment.
    if (!widget->testAttribute(Qt::WA_SetCursor)) widget->setCursor(Qt::ArrowCursor);
  }

  QObject* Context() { return &context_; }

 private:
  QObject context_;
};

}  // namespace platform
