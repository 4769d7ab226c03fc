#include "platform/qt/qt_screen_bounds.h"

#include <QAbstractEventDispatcher>
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include "platform/qt/qt_x11.h"

namespace platform {
namespace {

// A limit of our own, since the display can report screens of any size.
constexpr QSize kLargestDesktop{7680, 4320};

QSize InPixels(QSize size, double ratio) {
  return (QSizeF(size) * ratio).toSize();
}

QSize LargestInPixels() {
  const QScreen* screen = QGuiApplication::primaryScreen();
  if (screen == nullptr) return kLargestDesktop;
  return InPixels(screen->virtualSize(), screen->devicePixelRatio()).boundedTo(kLargestDesktop);
}

// The size of the window in pixels; `bound` for a window that is not the toolkit's.
QSize SizeOf(xcb_window_t id, QSize bound) {
  for (const QWindow* each : QGuiApplication::topLevelWindows()) {
    if (each->handle() != nullptr && each->winId() == id)
      return InPixels(each->size(), each->devicePixelRatio());
  }
  return bound;
}

void UndoGrowth(xcb_connection_t* display, xcb_configure_notify_event_t& event) {
  const QSize bound = LargestInPixels();
  const QSize reported(event.width, event.height);
  if (reported.boundedTo(bound) == reported) return;
  const QSize before = SizeOf(event.window, bound).boundedTo(bound).expandedTo({1, 1});
  event.width = static_cast<std::uint16_t>(before.width());
  event.height = static_cast<std::uint16_t>(before.height());
  const std::uint32_t sides[] = {event.width, event.height};
  xcb_configure_window(display, event.window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                       sides);
  xcb_flush(display);
}

}  // namespace

QSize LargestWindowSize() {
  const QScreen* screen = QGuiApplication::primaryScreen();
  return screen != nullptr ? screen->virtualSize().boundedTo(kLargestDesktop) : kLargestDesktop;
}

QtResizeGuard::QtResizeGuard() {
  QAbstractEventDispatcher::instance()->installNativeEventFilter(this);
}

QtResizeGuard::~QtResizeGuard() {
  QAbstractEventDispatcher::instance()->removeNativeEventFilter(this);
}

bool QtResizeGuard::nativeEventFilter(const QByteArray& /*type*/, void* message,
                                      qintptr* /*result*/) {
  xcb_connection_t* const display = X11Connection();
  auto* event = static_cast<xcb_generic_event_t*>(message);
  if (display != nullptr && X11EventType(*event) == XCB_CONFIGURE_NOTIFY)
    UndoGrowth(display, *reinterpret_cast<xcb_configure_notify_event_t*>(event));
  return false;
}

}  // namespace platform
