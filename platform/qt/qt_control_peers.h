// Controls as Qt widgets. Each kind is created in its own source file, such as qt_button_peer.cpp.
// Lives on the window thread.
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
  std::unique_ptr<ToolTipPeer> MakeToolTip(const PeerOrigin& origin) override;
};

// How a control takes the focus: always by a click, with WS_TABSTOP also by Tab.
Qt::FocusPolicy FocusPolicyOf(DWORD style);

// Converts a position in a text from the layer's characters to units of Qt and back. Qt counts a
// character beyond U+FFFF as two units.
int QtPosition(const QString& text, int position);
int LayerPosition(const QString& text, int position);

// A peer that receives signals of its widget. Connections with Context() as the receiver end with
// the peer; the widget may be destroyed long after it.
template <class Interface>
class QtControlPeer : public QtPeer<Interface> {
 protected:
  QtControlPeer(QWidget* widget, const PeerOrigin& origin)
      : QtPeer<Interface>(widget, origin.events) {
    // Without a cursor of its own, the widget would show that of its parent window.
    if (!widget->testAttribute(Qt::WA_SetCursor)) widget->setCursor(Qt::ArrowCursor);
  }

  QObject* Context() { return &context_; }

 private:
  QObject context_;
};

}  // namespace platform
