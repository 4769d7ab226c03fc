// How large a window may become: the memory of what it shows goes with its size. Used on the window
// thread.
#pragma once

#include <QAbstractNativeEventFilter>
#include <QSize>

namespace platform {

// The size of all screens together, within what any desktop has.
QSize LargestWindowSize();

// Other programs on an X11 display can give a window any size. One beyond those bounds is undone
// before the toolkit hears of it.
class QtResizeGuard final : public QAbstractNativeEventFilter {
 public:
  // There is an application.
  QtResizeGuard();
  ~QtResizeGuard() override;
  QtResizeGuard(const QtResizeGuard&) = delete;
  QtResizeGuard& operator=(const QtResizeGuard&) = delete;

 private:
  bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
};

}  // namespace platform
