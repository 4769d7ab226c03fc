// Drivers are loaded into the process that starts their service and unloaded when the service is
// stopped. A driver is built in (registered by the layer or a test), or a shared object that
// exports the two functions of driver_module.h. Any thread.
#pragma once

#include <windef.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string_view>

namespace platform {

class LoadedDriver {
 public:
  virtual ~LoadedDriver() = default;  // unloads
};

// Registers a built-in driver for images of that stem ("IpFltDrv" for "IpFltDrv.sys"). The factory
// returns null with `error` set when the driver cannot work on this machine.
using DriverFactory = std::function<std::unique_ptr<LoadedDriver>(DWORD& error)>;
void RegisterBuiltInDriver(std::wstring_view imageStem, DriverFactory factory);
void UnregisterBuiltInDriver(std::wstring_view imageStem);

// Whether drivers may be loaded from shared objects. The simulated machine forbids it.
void AllowDriverFiles(bool allowed);

// Receives the events that a driver reports. Called on any thread until the driver is unloaded.
using DriverEventSink = std::function<void(std::string_view utf8)>;

// Loads the driver of a service record's image path. "%SystemRoot%" stands for the root folder, and
// a relative path is relative to it. ".sys" becomes ".so", and a missing file is searched for in
// the executable's folder. Null with `error` set when the driver cannot be loaded.
std::unique_ptr<LoadedDriver> LoadDriver(std::wstring_view imagePath, DriverEventSink events,
                                         DWORD& error);

}  // namespace platform
