// systemd as the keeper of services: a service with a process of its own is a unit, written for it
// and enabled when it starts with the system. Errors are Win32 codes, 0 is success. Used by one
// thread at a time.
#pragma once

#include <memory>

#include "platform/service/linux_systemd_bus.h"
#include "platform/service/service_keeper.h"

namespace platform {

class SystemdKeeper final : public ServiceKeeper {
 public:
  SystemdKeeper(std::unique_ptr<SystemdBus> bus, SystemdPlace place)
      : bus_(std::move(bus)), place_(std::move(place)) {}

  // ERROR_SERVICE_EXISTS when the machine has a unit of that name that the layer has not written,
  // ERROR_ACCESS_DENIED when others could change the program.
  DWORD Configure(const ServiceRecord& record, bool hasNewStartType) override;
  // systemd keeps a running process whose unit is gone, and does not start it again.
  DWORD Remove(std::wstring_view name) override;
  // A start that fails is not tried again.
  DWORD Start(const ServiceRecord& record) override;
  bool IsStarting(std::wstring_view name) override;
  void NoteStop(std::wstring_view name) override;

 private:
  std::filesystem::path UnitFile(std::wstring_view name) const;
  std::filesystem::path EnvironmentFile(std::wstring_view name) const;
  DWORD Announce(const ServiceRecord& record, const std::string& text, bool hasNewStartType);

  const std::unique_ptr<SystemdBus> bus_;
  const SystemdPlace place_;
};

}  // namespace platform
