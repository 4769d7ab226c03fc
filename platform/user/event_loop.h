// What the thread queue of the window thread waits in. Without a desktop each queue waits by
// itself; the desktop module gives a loop of its own for the thread that owns its windows.
#pragma once

#include <chrono>
#include <optional>

namespace platform {

class EventLoop {
 public:
  virtual ~EventLoop() = default;

  // Handles the desktop's own events until Wake is called or the time is over (nothing: without
  // limit; zero: handles what is there already). May return earlier. Called on the window thread
  // only, also from inside an event that the loop handles.
  virtual void Wait(std::optional<std::chrono::milliseconds> limit) = 0;

  // Ends the running or the next Wait. Any thread.
  virtual void Wake() = 0;

  // The desktop is gone for good: Wait does nothing any more.
  virtual bool IsBroken() const = 0;
};

}  // namespace platform
