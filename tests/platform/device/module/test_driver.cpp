// A driver for the tests: device "TestModuleDevice", which turns its input round. It leaves its
// device for the host to delete.
#include <algorithm>
#include <cstdlib>

#include "platform/device/driver_module.h"

namespace {

constexpr std::uint32_t kReverse = 0x800;
constexpr std::uint32_t kOverstate = 0x804;
constexpr std::uint32_t kInvalidFunction = 1;

std::uint32_t Open(void*, std::uint32_t) {
  return 0;
}

std::uint32_t Control(void*, std::uint32_t code, const void* in, std::uint32_t inBytes, void* out,
                      std::uint32_t outBytes, std::uint32_t* returnedBytes) {
  if (code == kOverstate) {
    *returnedBytes = outBytes + 1000;
    return 0;
  }
  if (code != kReverse) return kInvalidFunction;
  const auto* bytes = static_cast<const char*>(in);
  *returnedBytes = std::min(inBytes, outBytes);
  std::reverse_copy(bytes, bytes + *returnedBytes, static_cast<char*>(out));
  return 0;
}

}  // namespace

extern "C" __attribute__((visibility("default"))) std::uint32_t DriverLoad(const DriverHost* host) {
  const char* error = std::getenv("TEST_DRIVER_ERROR");
  const DriverDevice device = {L"TestModuleDevice", nullptr, Open, Control};
  const std::uint32_t created = host->createDevice(&device);
  ::setenv("TEST_DRIVER_ROOT", host->rootFolder, 1);
  host->reportEvent(host->driver, "loaded \xC3\xA4");
  return error != nullptr ? static_cast<std::uint32_t>(std::atoi(error)) : created;
}

extern "C" __attribute__((visibility("default"))) void DriverUnload() {
  ::setenv("TEST_DRIVER_UNLOADED", "1", 1);
}
