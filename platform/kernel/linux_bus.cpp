#include "platform/kernel/linux_bus.h"

#include <cstring>

namespace platform {

void BusFault::Check(int result, const char* what) const {
  if (result < 0 && error_.name != nullptr) throw BusError(what, error_.name);
  CheckBus(result, what);
}

void CheckBus(int result, const char* what) {
  if (result < 0) throw BusError(what, std::strerror(-result));
}

}  // namespace platform
