// Qt's event loop, in which a thread queue waits. Lives on the window thread.
#pragma once

#include <QObject>
#include <QTimer>
#include <atomic>

#include "platform/qt/qt_display_watch.h"
#include "platform/user/event_loop.h"

namespace platform {

class QtEventLoop final : public EventLoop {
 public:
  // The watch must outlive the loop.
  explicit QtEventLoop(QtDisplayWatch& watch);

  void Wait(std::optional<std::chrono::milliseconds> limit) override;
  void Wake() override;
  bool IsBroken() const override { return broken_; }

 private:
  void HandleEvents(std::optional<std::chrono::milliseconds> limit);

  QtDisplayWatch& watch_;
  // The depth of nested waits.
  int depth_ = 0;
  std::atomic<bool> woken_ = false;
  bool broken_ = false;
  QTimer limit_;
};

}  // namespace platform
