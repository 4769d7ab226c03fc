#include "platform/device/ip_filter_driver.h"

#include <windows.h>

#include "platform/device/device_table.h"

namespace platform {
namespace {

class IpFilterDevice final : public Device {
 public:
  // Checked at each opening, because the process's rights may change.
  DWORD Open(DWORD) override { return AskPacketFilter(); }

  DWORD Control(DWORD, std::span<const std::byte>, std::span<std::byte>, DWORD& returned) override {
    returned = 0;
    return ERROR_INVALID_FUNCTION;
  }
};

class IpFilterDriver final : public LoadedDriver {
 public:
  IpFilterDriver() = default;
  ~IpFilterDriver() override { UnregisterDevice(kIpFilterDeviceName); }
  IpFilterDriver(const IpFilterDriver&) = delete;
  IpFilterDriver& operator=(const IpFilterDriver&) = delete;
};

}  // namespace

std::unique_ptr<LoadedDriver> LoadIpFilterDriver(DWORD& error) {
  error = AskPacketFilter();
  // Without the right the driver is loaded all the same; opening the device fails then.
  if (error != NO_ERROR && error != ERROR_ACCESS_DENIED) return nullptr;
  if (!RegisterDevice(kIpFilterDeviceName, std::make_shared<IpFilterDevice>())) {
    error = ERROR_ALREADY_EXISTS;
    return nullptr;
  }
  error = NO_ERROR;
  return std::make_unique<IpFilterDriver>();
}

}  // namespace platform
