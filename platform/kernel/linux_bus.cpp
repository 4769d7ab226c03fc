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

bool IsFrom(sd_bus_message* message, std::string_view name) {
  const char* const sender = ::sd_bus_message_get_sender(message);
  return sender != nullptr && name == sender;
}

}  // namespace platform
