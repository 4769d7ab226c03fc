// Limits the size of windows, since the memory for their contents grows with it. Used on the window
// thread.
#pragma once

#include <QAbstractNativeEventFilter>
#include <QSize>

namespace platform {

// The size of all screens together, limited to that of the largest desktop.
QSize LargestWindowSize();

// Other clients of an X11 display can resize any window. A resize beyond the limit is undone before
// the toolkit receives it.
class QtResizeGuard final : public QAbstractNativeEventFilter {
 public:
  // Requires the application object.
  QtResizeGuard();
  ~QtResizeGuard() override;
  QtResizeGuard(const QtResizeGuard&) = delete;
  QtResizeGuard& operator=(const QtResizeGuard&) = delete;

 private:
  bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
};

}  // namespace platform
