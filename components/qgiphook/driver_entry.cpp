// The two entry points of the driver module, and its one device.
#include <winerror.h>

#include <exception>
#include <memory>
#include <string>

#include "boot_option.h"
#include "gate_watch.h"
#include "packet_gate.h"
#include "platform/device/driver_module.h"

namespace {

using quillgate::gate::BootOption;
using quillgate::gate::GateWatch;
using quillgate::gate::PacketGate;

constexpr const wchar_t* kDeviceName = L"QGIpHook";

// Device type 0x939C, METHOD_BUFFERED, FILE_ANY_ACCESS. No code has data.
constexpr std::uint32_t kBlock = 0x939C2094;
constexpr std::uint32_t kPass = 0x939C2098;
constexpr std::uint32_t kAllowLocal = 0x939C209C;
constexpr std::uint32_t kBlockLocal = 0x939C20A0;

std::unique_ptr<PacketGate> theGate;
std::unique_ptr<GateWatch> theWatch;
const DriverHost* theHost = nullptr;

void LogLine(const std::string& text) noexcept {
  try {
    theHost->logLine(("QGIpHook: " + text).c_str());
  } catch (const std::exception&) {
    // Out of memory for the line: the caller still gets the error code.
  }
}

void Report(const std::string& text) noexcept {
  theHost->reportEvent(theHost->driver, text.c_str());
}

// Asked each time, so that the option takes effect without a restart.
std::chrono::milliseconds LeaseLength() {
  return BootOption(theHost->rootFolder).Lease();
}

// No exception may leave the module.
template <class Work>
std::uint32_t Guarded(Work work) noexcept {
  try {
    return work();
  } catch (const std::bad_alloc&) {
    return ERROR_NOT_ENOUGH_MEMORY;
  } catch (const std::exception& failure) {
    LogLine(failure.what());
    return ERROR_GEN_FAILURE;
  }
}

std::uint32_t OpenGate(void* context, std::uint32_t /*access*/) noexcept {
  return Guarded([context] { return static_cast<PacketGate*>(context)->Open(); });
}

std::uint32_t ControlGate(PacketGate& gate, std::uint32_t code) {
  switch (code) {
    case kBlock:
      return gate.Block();
    case kPass:
      return gate.Pass();
    case kAllowLocal:
      return gate.AllowLocal(true);
    case kBlockLocal:
      return gate.AllowLocal(false);
    default:
      return ERROR_INVALID_FUNCTION;
  }
}

std::uint32_t Control(void* context, std::uint32_t code, const void* /*in*/,
                      std::uint32_t /*inBytes*/, void* /*out*/, std::uint32_t /*outBytes*/,
                      std::uint32_t* returnedBytes) noexcept {
  if (returnedBytes != nullptr) *returnedBytes = 0;
  return Guarded([=] { return ControlGate(*static_cast<PacketGate*>(context), code); });
}

// Without a watch, changes by others are not repaired until the program switches the gate again.
void Watch() noexcept {
  try {
    theWatch = std::make_unique<GateWatch>(quillgate::gate::kTableStem, [](bool linksChanged) {
      return Guarded([=] { return theGate->Repair(linksChanged); }) == 0;
    });
  } catch (const std::exception& failure) {
    LogLine(std::string("the gate is not watched: ") + failure.what());
  }
}

}  // namespace

extern "C" __attribute__((visibility("default"))) std::uint32_t DriverLoad(
    const DriverHost* host) noexcept {
  theHost = host;
  return Guarded([host] {
    theGate = std::make_unique<PacketGate>(LogLine, Report, LeaseLength);
    theGate->TakeOver();
    const DriverDevice device{kDeviceName, theGate.get(), OpenGate, Control};
    const std::uint32_t error = host->createDevice(&device);
    if (error == 0 && quillgate::gate::FilterAccess() == 0) Watch();
    return error;
  });
}

// Unloading in order opens the gate of a lease for good. A killed process does not get here: its
// closed gate stays closed, and its lease runs out.
extern "C" __attribute__((visibility("default"))) void DriverUnload() noexcept {
  theHost->deleteDevice(kDeviceName);
  theWatch.reset();
  Guarded([] {
    theGate->Leave();
    return 0u;
  });
  theGate.reset();
}
