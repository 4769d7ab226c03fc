// Qt's event loop as what a thread queue waits in. Lives on the window thread.
#pragma once

#include <QObject>
#include <QTimer>
#include <atomic>

#include "platform/user/event_loop.h"

namespace platform {

class QtEventLoop final : public EventLoop {
 public:
  QtEventLoop();

  void Wait(std::optional<std::chrono::milliseconds> limit) override;
  void Wake() override;
  bool IsBroken() const override { return broken_; }

 private:
  void HandleEvents(std::optional<std::chrono::milliseconds> limit);

  // Waits inside of waits.
  int depth_ = 0;
  std::atomic<bool> woken_ = false;
  bool broken_ = false;
  QTimer limit_;
};

}  // namespace platform
