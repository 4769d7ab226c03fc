// A seat for tests: the test says who is there and when the machine sleeps, and those who watch are
// notified on the test's own thread. Any thread.
#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "platform/account/session_watch.h"

namespace platform {

class SimulatedSeat {
 public:
  // Notifies everybody of the state, as do later watches at their start. At first nobody is there.
  void Show(SeatState state);
  // Returns when the observers have returned.
  void Suspend();
  void Resume(bool announced);

  std::unique_ptr<SessionWatch> Watch(SessionObserver& observer);

 private:
  class Watcher;
  struct State {
    std::mutex mutex;
    SeatState seat;
    std::vector<SessionObserver*> observers;
  };
  std::vector<SessionObserver*> Observers() const;

  // Shared with the watches, which may outlive the seat.
  const std::shared_ptr<State> state_ = std::make_shared<State>();
};

}  // namespace platform
