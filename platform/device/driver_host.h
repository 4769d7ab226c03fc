// Drivers: modules that are loaded into the process that starts their service, and unloaded when
// the service is stopped. A driver is a built-in one of the layer (or of a test), or a shared
// object that exports the two functions of driver_module.h. Any thread.
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

// Makes a driver whose image is a file of that stem ("IpFltDrv" for "IpFltDrv.sys"); answers null
// with `error` set when it cannot work on this machine.
using DriverFactory = std::function<std::unique_ptr<LoadedDriver>(DWORD& error)>;
void RegisterBuiltInDriver(std::wstring_view imageStem, DriverFactory factory);
void UnregisterBuiltInDriver(std::wstring_view imageStem);

// Whether drivers may come from shared objects; they may, unless the simulated machine forbids it.
void AllowDriverFiles(bool allowed);

// Where the events go that a driver reports, as UTF-8. Any thread, until the driver is unloaded.
using DriverEventSink = std::function<void(std::string_view utf8)>;

// Loads the driver of an image path as the service record holds it: "%SystemRoot%" and a leading
// "System32" stand for the root folder, ".sys" becomes ".so", and a file that is not there is
// looked for beside the executable. Null with `error` set when there is no such driver.
std::unique_ptr<LoadedDriver> LoadDriver(std::wstring_view imagePath, DriverEventSink events,
                                         DWORD& error);

}  // namespace platform
