// Devices: what CreateFileW opens as "\\.\name" and DeviceIoControl talks to. Registered by driver
// modules, by the layer's own families and by the simulated machine. Any thread.
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

  // Called for each CreateFileW; 0, or the error that the caller gets.
  virtual DWORD Open(DWORD access) = 0;

  // One control code. Sets `returned` to the number of bytes written to `out`; 0, or the error.
  virtual DWORD Control(DWORD code, std::span<const std::byte> in, std::span<std::byte> out,
                        DWORD& returned) = 0;
};

// False when a device of that name (any case) exists.
bool RegisterDevice(std::wstring_view name, std::shared_ptr<Device> device);
void UnregisterDevice(std::wstring_view name);

// A family that has a device for each of many things asks here instead of registering each one; it
// is asked after the table, with the name as the caller wrote it. Null means no such device. The
// network interfaces answer here unless the simulated machine says otherwise.
using DeviceResolver = std::function<std::shared_ptr<Device>(std::wstring_view name)>;
void SetDeviceResolver(DeviceResolver resolver);  // empty: NetworkDevice again

// The device of the interface of that name, which answers the NDIS statistics; null when there is
// none.
std::shared_ptr<Device> NetworkDevice(std::wstring_view name);

}  // namespace platform
