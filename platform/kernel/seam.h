// Holds a function that replaces what the machine does. Empty unless the simulated machine has set
// one. Any thread.
#pragma once

#include <mutex>
#include <utility>

namespace platform {

template <class Function>
class Seam {
 public:
  void Set(Function function) {
    const std::lock_guard lock(mutex_);
    function_ = std::move(function);
  }

  // A copy, so that the function is called without the lock and may be replaced meanwhile.
  Function Get() const {
    const std::lock_guard lock(mutex_);
    return function_;
  }

 private:
  mutable std::mutex mutex_;
  Function function_;
};

}  // namespace platform
