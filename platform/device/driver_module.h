// The interface between the layer and a driver module: a shared object that exports DriverLoad and
// DriverUnload with C linkage. Not a Windows interface; nothing may throw across it.
#pragma once

#include <cstdint>

extern "C" {

// A device's operations. Each returns 0 or a Win32 error code. May be called from any thread, one
// call at a time for each device.
struct DriverDevice {
  const wchar_t* name;  // as in "\\.\name"
  void* context;        // handed back to every operation
  std::uint32_t (*open)(void* context, std::uint32_t access);
  std::uint32_t (*control)(void* context, std::uint32_t code, const void* in, std::uint32_t inBytes,
                           void* out, std::uint32_t outBytes, std::uint32_t* returnedBytes);
};

// What the layer gives to a driver; lives until DriverUnload has returned. Devices are made and
// deleted by the thread that calls DriverLoad and DriverUnload, the rest is for any thread.
struct DriverHost {
  // 0, or the error; the structure is copied, the name too. To be called from DriverLoad.
  std::uint32_t (*createDevice)(const DriverDevice* device);
  // Devices that are left when the driver is unloaded are deleted before DriverUnload is called.
  void (*deleteDevice)(const wchar_t* name);
  void (*logLine)(const char* utf8);
  // A warning in the system's event log, under the name of the driver's service. `driver` is the
  // member below.
  void (*reportEvent)(void* driver, const char* utf8);
  void* driver;
};

// 0, or the error with which starting the driver's service fails.
using DriverLoadFunction = std::uint32_t (*)(const DriverHost* host);
using DriverUnloadFunction = void (*)();

}  // extern "C"
