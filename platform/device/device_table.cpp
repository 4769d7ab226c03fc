#include "platform/device/device_table.h"

#include <map>
#include <mutex>

#include "platform/device/open_device.h"
#include "platform/kernel/encoding.h"

namespace platform {
namespace {

struct DeviceTable {
  std::mutex mutex;
  std::map<std::wstring, std::shared_ptr<Device>, std::less<>> devices;  // by name in lower case
  DeviceResolver resolver;
};

DeviceTable& Table() {
  // Never destroyed: drivers are unloaded by destructors of static objects.
  static DeviceTable& table = *new DeviceTable;
  return table;
}

}  // namespace

bool RegisterDevice(std::wstring_view name, std::shared_ptr<Device> device) {
  DeviceTable& table = Table();
  const std::lock_guard lock(table.mutex);
  return table.devices.emplace(LowerName(name), std::move(device)).second;
}

void UnregisterDevice(std::wstring_view name) {
  DeviceTable& table = Table();
  std::shared_ptr<Device> removed;  // outlives the lock: a device's destructor may call in here
  const std::lock_guard lock(table.mutex);
  const auto found = table.devices.find(LowerName(name));
  if (found == table.devices.end()) return;
  removed = std::move(found->second);
  table.devices.erase(found);
}

void SetDeviceResolver(DeviceResolver resolver) {
  DeviceTable& table = Table();
  const std::lock_guard lock(table.mutex);
  table.resolver = std::move(resolver);
}

std::shared_ptr<Device> FindDevice(std::wstring_view name) {
  DeviceTable& table = Table();
  DeviceResolver resolver;
  {
    const std::lock_guard lock(table.mutex);
    const auto found = table.devices.find(LowerName(name));
    if (found != table.devices.end()) return found->second;
    resolver = table.resolver;
  }
  return resolver ? resolver(name) : NetworkDevice(name);
}

}  // namespace platform
