// The calls of systemd's manager over D-Bus that a keeper of services needs. Units are named with
// their suffix ("sample.service"). Errors are Win32 codes, 0 is success; a failed call leaves a
// line in the log. Used by one thread at a time.
#pragma once

#include <windef.h>

#include <functional>
#include <memory>
#include <string>

#include "platform/kernel/linux_bus.h"

namespace platform {

class SystemdBus {
 public:
  // Null when the bus cannot be reached.
  static std::unique_ptr<SystemdBus> Connect(const std::string& address);

  // Whether the machine is being shut down or restarted.
  bool IsMachineGoingDown();

  // Whether systemd knows a unit file of that name, in whichever folder. True when it cannot be
  // asked.
  bool KnowsUnitFile(const std::string& unit);
  // Whether its process is being started; the pause before a restart does not count.
  bool IsStarting(const std::string& unit);

  // Whether the unit starts with the machine.
  DWORD Enable(const std::string& unit);
  DWORD Disable(const std::string& unit);
  // Reads the unit files again.
  DWORD Reload();

  // Starts the unit and waits until it is ready or `isTaken` answers true, 30 s at most.
  // ERROR_SERVICE_REQUEST_TIMEOUT also when the start fails.
  DWORD Start(const std::string& unit, const std::function<bool()>& isTaken);
  // Queues the stop; does not wait.
  DWORD Stop(const std::string& unit);

 private:
  explicit SystemdBus(BusConnection bus) : bus_(std::move(bus)) {}

  // `types` are those of the arguments, as sd_bus_message_append has them.
  template <class... Arguments>
  DWORD Call(const char* member, BusMessage& reply, const char* types, Arguments... arguments);
  // Empty when it cannot be read.
  std::string Property(const char* path, const char* interface, const char* name);

  BusConnection bus_;
};

}  // namespace platform
