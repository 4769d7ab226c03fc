#include "platform/testing/simulated_seat.h"

namespace platform {

class SimulatedSeat::Watcher final : public SessionWatch {
 public:
  Watcher(std::shared_ptr<State> state, SessionObserver& observer)
      : state_(std::move(state)), observer_(observer) {
    const std::lock_guard lock(state_->mutex);
    state_->observers.push_back(&observer_);
  }
  ~Watcher() override {
    const std::lock_guard lock(state_->mutex);
    std::erase(state_->observers, &observer_);
  }

 private:
  const std::shared_ptr<State> state_;
  SessionObserver& observer_;
};

std::vector<SessionObserver*> SimulatedSeat::Observers() const {
  const std::lock_guard lock(state_->mutex);
  return state_->observers;
}

void SimulatedSeat::Show(SeatState state) {
  {
    const std::lock_guard lock(state_->mutex);
    state_->seat = state;
  }
  for (SessionObserver* const each : Observers())
    each->OnSeat(state);
}

void SimulatedSeat::Suspend() {
  for (SessionObserver* const each : Observers())
    each->OnSuspend({});
}

void SimulatedSeat::Resume(bool announced) {
  for (SessionObserver* const each : Observers())
    each->OnResume(announced);
}

std::unique_ptr<SessionWatch> SimulatedSeat::Watch(SessionObserver& observer) {
  auto watcher = std::make_unique<Watcher>(state_, observer);
  SeatState seat;
  {
    const std::lock_guard lock(state_->mutex);
    seat = state_->seat;
  }
  observer.OnSeat(seat);
  return watcher;
}

}  // namespace platform
