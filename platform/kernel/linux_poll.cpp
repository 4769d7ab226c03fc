#include "platform/kernel/linux_poll.h"

#include <poll.h>

#include <cerrno>

namespace platform {

bool AwaitInput(int descriptor, std::chrono::steady_clock::time_point deadline) {
  pollfd readable{descriptor, POLLIN, 0};
  for (;;) {
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
    if (left.count() <= 0) return false;
    const int ready = ::poll(&readable, 1, static_cast<int>(left.count()));
    if (ready < 0 && errno == EINTR) continue;
    return ready == 1;
  }
}

}  // namespace platform
