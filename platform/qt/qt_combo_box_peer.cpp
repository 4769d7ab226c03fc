// Drop-down lists as Qt combo boxes.
#include <QAbstractItemView>
#include <QComboBox>
#include <algorithm>

#include "platform/qt/qt_control_peers.h"

namespace platform {
namespace {

// The frame and padding around a line of text. A box with the usual font is 21 pixels high.
constexpr int kFrame = 8;
constexpr int kLeastHeight = 21;
constexpr int kFewestItems = 3;

class QtComboBoxPeer final : public QtControlPeer<ComboBoxPeer> {
 public:
  QtComboBoxPeer(QComboBox* box, const PeerOrigin& origin, ComboBoxEvents& events)
      : QtControlPeer(box, origin), box_(box) {
    box->setFocusPolicy(FocusPolicyOf(origin.style));
    QObject::connect(box, &QComboBox::activated, Context(),
                     [&events](int index) { events.OnChosen(index); });
  }

  // The text is that of the selected item.
  void SetText(const std::wstring& /*text*/) override {}
  void Insert(int index, const std::wstring& text) override {
    box_->insertItem(index, QString::fromStdWString(text));
    // Qt selects the first item that is inserted by itself.
    box_->setCurrentIndex(chosen_);
  }
  void Remove(int index) override { box_->removeItem(index); }
  void Clear() override { box_->clear(); }
  void Select(int index) override {
    chosen_ = index;
    box_->setCurrentIndex(index);
  }
  int ClosedHeight() const override {
    return std::max(kLeastHeight, box_->fontMetrics().height() + kFrame);
  }
  void SetListHeight(int height) override {
    const int items = height / box_->fontMetrics().height();
    box_->setMaxVisibleItems(std::max(kFewestItems, items));
  }

 private:
  QPointer<QComboBox> box_;
  int chosen_ = -1;
};

}  // namespace

std::unique_ptr<ComboBoxPeer> QtControlPeers::MakeComboBox(const PeerOrigin& origin,
                                                           ComboBoxEvents& events) {
  return std::make_unique<QtComboBoxPeer>(new QComboBox(WidgetOf(origin.parent)), origin, events);
}

}  // namespace platform
