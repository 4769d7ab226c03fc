// The X11 display that the toolkit has joined. Used on the window thread.
#pragma once

#include <xcb/xcb.h>

#include <QGuiApplication>

namespace platform {

// Null on other platforms. The offscreen platform has the interface, too, but no display.
inline const QNativeInterface::QX11Application* X11Application() {
  const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  return x11 != nullptr && x11->connection() != nullptr ? x11 : nullptr;
}

inline xcb_connection_t* X11Connection() {
  const auto* x11 = X11Application();
  return x11 != nullptr ? x11->connection() : nullptr;
}

// The event's type, whether the server or another client sent it.
inline unsigned X11EventType(const xcb_generic_event_t& event) {
  constexpr unsigned kSentEvent = 0x80;
  return event.response_type & ~kSentEvent;
}

}  // namespace platform
