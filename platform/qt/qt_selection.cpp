#include "platform/qt/qt_selection.h"

#include <QAbstractEventDispatcher>
#include <QAbstractNativeEventFilter>
#include <QEventLoop>
#include <QGuiApplication>
#include <QTimer>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "platform/qt/qt_x11.h"

namespace platform {
namespace {

using namespace std::chrono_literals;

// The selection owner's time to deliver the text.
constexpr auto kTimeout = 1s;
constexpr qsizetype kBytesPerCharacter = 4;

template <class T>
using Reply = std::unique_ptr<T, decltype(&std::free)>;

xcb_atom_t AtomOf(xcb_connection_t* display, std::string_view name) {
  const auto cookie =
      xcb_intern_atom(display, 0, static_cast<std::uint16_t>(name.size()), name.data());
  const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(display, cookie, nullptr),
                                             std::free);
  return reply != nullptr ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

// Converts an X11 selection into a property of a window of its own. The toolkit would read the
// whole property before it returned any of it. A large one comes in pieces (INCR).
class Transfer final : public QAbstractNativeEventFilter {
 public:
  Transfer(xcb_connection_t* display, qsizetype most)
      : display_(display),
        most_(most),
        property_(AtomOf(display, "PASTED")),
        pieces_(AtomOf(display, "INCR")),
        window_(xcb_generate_id(display)) {
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(display)).data->root;
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(display, XCB_COPY_FROM_PARENT, window_, root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &events);
    QAbstractEventDispatcher::instance()->installNativeEventFilter(this);
  }
  ~Transfer() override {
    QAbstractEventDispatcher::instance()->removeNativeEventFilter(this);
    xcb_destroy_window(display_, window_);
    xcb_flush(display_);
  }
  Transfer(const Transfer&) = delete;
  Transfer& operator=(const Transfer&) = delete;

  QByteArray Take(xcb_atom_t selection) {
    xcb_convert_selection(display_, window_, selection, AtomOf(display_, "UTF8_STRING"), property_,
                          XCB_CURRENT_TIME);
    xcb_flush(display_);
    QTimer::singleShot(kTimeout, &wait_, &QEventLoop::quit);
    wait_.exec(QEventLoop::ExcludeUserInputEvents);
    return taken_;
  }

 private:
  bool nativeEventFilter(const QByteArray& /*type*/, void* message, qintptr* /*result*/) override {
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    switch (X11EventType(*event)) {
      case XCB_SELECTION_NOTIFY:
        return OnConverted(*reinterpret_cast<const xcb_selection_notify_event_t*>(event));
      case XCB_PROPERTY_NOTIFY:
        return OnProperty(*reinterpret_cast<const xcb_property_notify_event_t*>(event));
      default:
        return false;
    }
  }

  bool OnConverted(const xcb_selection_notify_event_t& event) {
    if (event.requestor != window_) return false;
    if (event.property != property_ || !ReadPiece()) wait_.quit();
    return true;
  }

  bool OnProperty(const xcb_property_notify_event_t& event) {
    if (event.window != window_) return false;
    const bool isPiece = inPieces_ && event.state == XCB_PROPERTY_NEW_VALUE;
    if (isPiece && !ReadPiece()) wait_.quit();
    return true;
  }

  // Returns whether more pieces follow. A property that was read to its end is deleted, which
  // requests the next piece.
  bool ReadPiece() {
    const auto words = static_cast<std::uint32_t>((most_ - taken_.size() + 3) / 4);
    const auto cookie =
        xcb_get_property(display_, 1, window_, property_, XCB_GET_PROPERTY_TYPE_ANY, 0, words);
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(display_, cookie, nullptr),
                                                std::free);
    if (reply == nullptr) return false;
    if (!inPieces_ && reply->type == pieces_) return inPieces_ = true;
    const int length = xcb_get_property_value_length(reply.get());
    taken_.append(static_cast<const char*>(xcb_get_property_value(reply.get())), length);
    return inPieces_ && length > 0 && taken_.size() < most_;
  }

  xcb_connection_t* const display_;
  const qsizetype most_;
  const xcb_atom_t property_;
  const xcb_atom_t pieces_;
  const xcb_window_t window_;
  bool inPieces_ = false;
  QByteArray taken_;
  QEventLoop wait_;
};

bool IsOwn(const QClipboard& clipboard, QClipboard::Mode mode) {
  return mode == QClipboard::Selection ? clipboard.ownsSelection() : clipboard.ownsClipboard();
}

}  // namespace

QString SelectionText(QClipboard::Mode mode, qsizetype most) {
  const QClipboard& clipboard = *QGuiApplication::clipboard();
  xcb_connection_t* const display = X11Connection();
  if (display == nullptr || IsOwn(clipboard, mode)) return clipboard.text(mode).left(most);
  Transfer transfer(display, most * kBytesPerCharacter);
  const bool isPrimary = mode == QClipboard::Selection;
  const xcb_atom_t selection =
      isPrimary ? xcb_atom_t{XCB_ATOM_PRIMARY} : AtomOf(display, "CLIPBOARD");
  return QString::fromUtf8(transfer.Take(selection)).left(most);
}

}  // namespace platform
