#include "platform/service/driver_keeper.h"

#include <windows.h>
#include <winsvc.h>

#include <map>
#include <memory>
#include <mutex>

#include "platform/device/driver_host.h"
#include "platform/kernel/encoding.h"
#include "platform/kernel/log.h"
#include "platform/service/event_delivery.h"
#include "platform/service/service_state.h"

namespace platform {
namespace {

struct HostedDriver {
  std::unique_ptr<LoadedDriver> driver;
  FileDescriptor lock;
};

struct HostedDrivers {
  std::mutex mutex;
  std::map<std::wstring, HostedDriver, std::less<>> all;  // by name in lower case
};

HostedDrivers& Hosted() {
  // Never destroyed: programs stop their drivers from destructors of static objects.
  static HostedDrivers& drivers = *new HostedDrivers;
  return drivers;
}

ServiceState DriverState(DWORD state) {
  ServiceState published;
  published.status.dwServiceType = SERVICE_KERNEL_DRIVER;
  published.status.dwCurrentState = state;
  if (state == SERVICE_RUNNING) published.status.dwControlsAccepted = SERVICE_ACCEPT_STOP;
  published.processId = ::GetCurrentProcessId();
  return published;
}

}  // namespace

DWORD StartDriver(const ServiceRecord& record, FileDescriptor lock) {
  DWORD error = NO_ERROR;
  HostedDriver hosted;
  const auto report = [name = record.name](std::string_view text) {
    DeliverEvent({.source = name, .type = EVENTLOG_WARNING_TYPE, .text = Wide(text)});
  };
  hosted.driver = LoadDriver(record.imagePath, report, error);
  if (hosted.driver == nullptr) {
    PublishState(record.name, StoppedState(record.type, error));
    return error;
  }
  error = PublishState(record.name, DriverState(SERVICE_RUNNING));
  if (error != NO_ERROR) return error;
  hosted.lock = std::move(lock);
  const std::lock_guard guard(Hosted().mutex);
  Hosted().all.insert_or_assign(LowerName(record.name), std::move(hosted));
  return NO_ERROR;
}

DWORD StopDriver(std::wstring_view name) {
  HostedDriver stopping;
  {
    const std::lock_guard guard(Hosted().mutex);
    auto node = Hosted().all.extract(LowerName(name));
    if (node.empty()) {
      LogLine("driver " + Utf8(name) + " is hosted by another process, which alone can stop it");
      return ERROR_SERVICE_CANNOT_ACCEPT_CTRL;
    }
    stopping = std::move(node.mapped());
  }
  PublishState(name, DriverState(SERVICE_STOP_PENDING));
  stopping.driver.reset();
  PublishState(name, StoppedState(SERVICE_KERNEL_DRIVER, NO_ERROR));
  // Read removes a record that is marked for deletion. The lock is released last, with `stopping`.
  ServiceRecord record;
  ServiceDatabase().Read(name, record);
  return NO_ERROR;
}

}  // namespace platform
