// Loads drivers that are shared objects with the two functions of driver_module.h. Any thread.
#pragma once

#include <windef.h>

#include <filesystem>
#include <memory>

#include "platform/device/driver_host.h"

namespace platform {

// Loads the shared object and calls its DriverLoad. Null with `error` set: an error of
// RequireTrusted, ERROR_ALREADY_EXISTS when it is already loaded, ERROR_BAD_EXE_FORMAT when it
// cannot be loaded, ERROR_PROC_NOT_FOUND when it is no driver, or the error that DriverLoad
// returned.
std::unique_ptr<LoadedDriver> LoadModuleDriver(const std::filesystem::path& file,
                                               DriverEventSink events, DWORD& error);

}  // namespace platform
