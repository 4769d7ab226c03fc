#include "platform/service/service_keeper.h"

#include <sys/stat.h>
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

// A changed root, as an installer has it, may hold the machine's /run. Who may not look counts as
// not being in one.
bool IsInChroot() {
  struct stat own {};
  struct stat machines {};
  return ::stat("/", &own) == 0 && ::stat("/proc/1/root", &machines) == 0 &&
         (own.st_dev != machines.st_dev || own.st_ino != machines.st_ino);
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
  if (::sd_booted() <= 0 || IsInChroot() || !IsMachineRoot()) return std::nullopt;
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

bool IsMachineGoingDown() {
  const auto place = FindSystemd();
  const auto bus = place ? SystemdBus::Connect(place->busAddress) : nullptr;
  return bus != nullptr && bus->IsMachineGoingDown();
}

void SetSystemdPlace(std::optional<SystemdPlace> place) {
  const std::lock_guard guard(Chosen().mutex);
  Chosen().place = std::move(place);
}

}  // namespace platform
