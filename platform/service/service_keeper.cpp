#include "platform/service/service_keeper.h"

#include <systemd/sd-daemon.h>

#include <mutex>

#include "platform/kernel/log.h"
#include "platform/kernel/path.h"
#include "platform/service/linux_systemd_keeper.h"
#include "platform/service/own_keeper.h"

namespace platform {
namespace {

struct ChosenPlace {
  std::mutex mutex;
  std::optional<SystemdPlace> place;
};

ChosenPlace& Chosen() {
  static ChosenPlace& chosen = *new ChosenPlace;
  return chosen;
}

// The address is not taken from the environment, which may be another user's.
SystemdPlace MachinesPlace() {
  return {"unix:path=/run/dbus/system_bus_socket", "/etc/systemd/system", "/run"};
}

std::optional<SystemdPlace> FindSystemd() {
  {
    const std::lock_guard guard(Chosen().mutex);
    if (Chosen().place) return Chosen().place;
  }
  if (::sd_booted() <= 0 || !IsMachineRoot()) return std::nullopt;
  return MachinesPlace();
}

}  // namespace

std::unique_ptr<ServiceKeeper> CurrentKeeper() {
  if (const auto place = FindSystemd()) {
    if (auto bus = SystemdBus::Connect(place->busAddress)) {
      return std::make_unique<SystemdKeeper>(std::move(bus), *place);
    }
    LogLine("the bus of systemd cannot be reached; services are kept without it");
  }
  return std::make_unique<OwnKeeper>();
}

void SetSystemdPlace(std::optional<SystemdPlace> place) {
  const std::lock_guard guard(Chosen().mutex);
  Chosen().place = std::move(place);
}

}  // namespace platform
