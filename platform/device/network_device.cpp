#include <windows.h>
#include <ntddndis.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <mutex>
#include <string>

#include "platform/device/device_table.h"
#include "platform/kernel/log.h"
#include "platform/net/interface_source.h"

namespace platform {
namespace {

// The NDIS statistics of one interface. The device stays valid when the interface is removed.
class NetworkStatistics final : public Device {
 public:
  explicit NetworkStatistics(std::wstring name) : name_(std::move(name)) {}

  DWORD Open(DWORD) override { return NO_ERROR; }
  DWORD Control(DWORD code, std::span<const std::byte> in, std::span<std::byte> out,
                DWORD& returned) override;

 private:
  DWORD Query(DWORD objectId, std::span<std::byte> out, DWORD& returned) const;
  DWORD QueryAddress(std::span<std::byte> out, DWORD& returned) const;

  const std::wstring name_;
};

DWORD ReturnValue(std::span<const std::byte> value, std::span<std::byte> out, DWORD& returned) {
  if (out.size() < value.size()) return ERROR_INSUFFICIENT_BUFFER;
  std::ranges::copy(value, out.begin());
  returned = static_cast<DWORD>(value.size());
  return NO_ERROR;
}

DWORD NetworkStatistics::Control(DWORD code, std::span<const std::byte> in,
                                 std::span<std::byte> out, DWORD& returned) {
  returned = 0;
  if (code != IOCTL_NDIS_QUERY_GLOBAL_STATS) {
    LogLine("a network device got a control code that it does not have");
    return ERROR_INVALID_FUNCTION;
  }
  DWORD objectId = 0;
  if (in.size() < sizeof objectId) return ERROR_INVALID_PARAMETER;
  std::memcpy(&objectId, in.data(), sizeof objectId);
  return Query(objectId, out, returned);
}

DWORD NetworkStatistics::Query(DWORD objectId, std::span<std::byte> out, DWORD& returned) const {
  if (objectId == OID_802_3_CURRENT_ADDRESS) return QueryAddress(out, returned);
  if (objectId != OID_GEN_DIRECTED_BYTES_XMIT && objectId != OID_GEN_DIRECTED_BYTES_RCV) {
    LogLine("a network device was asked for statistics that it does not have");
    return ERROR_NOT_SUPPORTED;
  }
  const auto counters = CurrentInterfaces().Counters(name_);
  if (!counters) return ERROR_DEV_NOT_EXIST;
  const std::uint64_t bytes =
      objectId == OID_GEN_DIRECTED_BYTES_XMIT ? counters->bytesSent : counters->bytesReceived;
  return ReturnValue(std::as_bytes(std::span(&bytes, 1)), out, returned);
}

DWORD NetworkStatistics::QueryAddress(std::span<std::byte> out, DWORD& returned) const {
  const std::vector<NetworkInterface> interfaces = CurrentInterfaces().List();
  const auto found = std::ranges::find(interfaces, name_, &NetworkInterface::name);
  if (found == interfaces.end()) return ERROR_DEV_NOT_EXIST;
  // A tunnel is not an 802.3 device.
  if (found->physicalAddress.empty()) return ERROR_NOT_SUPPORTED;
  return ReturnValue(std::as_bytes(std::span(found->physicalAddress)), out, returned);
}

}  // namespace

std::shared_ptr<Device> NetworkDevice(std::wstring_view name) {
  if (!CurrentInterfaces().Counters(name)) return nullptr;
  // One device for each name, so that handles that a program leaves open do not add devices.
  static std::mutex mutex;
  static auto& devices = *new std::map<std::wstring, std::shared_ptr<Device>, std::less<>>;
  const std::lock_guard lock(mutex);
  const auto found = devices.find(name);
  if (found != devices.end()) return found->second;
  auto device = std::make_shared<NetworkStatistics>(std::wstring(name));
  devices.emplace(name, device);
  return device;
}

}  // namespace platform
