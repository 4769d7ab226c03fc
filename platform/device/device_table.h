// Devices, which CreateFileW opens as "\\.\name" and DeviceIoControl controls. Registered by driver
// modules, by the layer's families and by the simulated machine. Any thread.
#pragma once

#include <windef.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace platform {

class Device {
 public:
  virtual ~Device() = default;

  // Called for each CreateFileW; 0, or the error with which CreateFileW fails.
  virtual DWORD Open(DWORD access) = 0;

  // Handles one control code. Sets `returned` to the number of bytes written to `out`. 0, or the
  // error with which DeviceIoControl fails.
  virtual DWORD Control(DWORD code, std::span<const std::byte> in, std::span<std::byte> out,
                        DWORD& returned) = 0;
};

// False when a device of that name (any case) exists.
bool RegisterDevice(std::wstring_view name, std::shared_ptr<Device> device);
void UnregisterDevice(std::wstring_view name);

// Finds devices that are not registered one by one, such as those of the network interfaces. Called
// with the name as passed to CreateFileW when no registered device has it. Returns null when there
// is no such device. NetworkDevice is the resolver unless the simulated machine has set another.
using DeviceResolver = std::function<std::shared_ptr<Device>(std::wstring_view name)>;
void SetDeviceResolver(DeviceResolver resolver);  // empty: NetworkDevice again

// The device of the network interface of that name, which supports the NDIS statistics; null when
// there is no such interface.
std::shared_ptr<Device> NetworkDevice(std::wstring_view name);

}  // namespace platform
