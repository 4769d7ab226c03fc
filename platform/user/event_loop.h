// The event loop that the queue of the window thread waits in. Supplied by the desktop module.
// Every other queue waits on its own condition variable.
#pragma once

#include <chrono>
#include <optional>

namespace platform {

class EventLoop {
 public:
  virtual ~EventLoop() = default;

  // Dispatches the desktop's events until Wake is called or the limit has passed (nothing: no
  // limit; zero: dispatches pending events only). May return earlier. Called on the window thread
  // only, also from inside an event that the loop dispatches.
  virtual void Wait(std::optional<std::chrono::milliseconds> limit) = 0;

  // Makes the running or the next Wait return. Any thread.
  virtual void Wake() = 0;

  // True when the connection to the desktop is lost for good; Wait then returns at once.
  virtual bool IsBroken() const = 0;
};

}  // namespace platform
