// The interface between the layer and a driver module, a shared object that exports DriverLoad and
// DriverUnload with C linkage. Not a Windows interface. No exception may cross it.
#pragma once

#include <cstdint>

extern "C" {

// A device's operations. Each returns 0 or a Win32 error code. The layer calls them from any
// thread, one call at a time for each device.
struct DriverDevice {
  const wchar_t* name;  // as in "\\.\name"
  void* context;        // passed to every operation
  std::uint32_t (*open)(void* context, std::uint32_t access);
  std::uint32_t (*control)(void* context, std::uint32_t code, const void* in, std::uint32_t inBytes,
                           void* out, std::uint32_t outBytes, std::uint32_t* returnedBytes);
};

// The functions of the layer that a driver may call until DriverUnload returns. createDevice and
// deleteDevice may only be called during DriverLoad or DriverUnload, on their thread; the others
// from any thread.
struct DriverHost {
  // 0, or the error. The structure and the name are copied. To be called from DriverLoad.
  std::uint32_t (*createDevice)(const DriverDevice* device);
  // The layer deletes the remaining devices before it calls DriverUnload.
  void (*deleteDevice)(const wchar_t* name);
  void (*logLine)(const char* utf8);
  // Reports a warning to the event log, with the driver's service as the source. `driver` is the
  // member below.
  void (*reportEvent)(void* driver, const char* utf8);
  void* driver;
  // The layer's root folder, absolute, in UTF-8: a driver may keep files there.
  const char* rootFolder;
};

// 0, or the error with which starting the driver's service fails.
using DriverLoadFunction = std::uint32_t (*)(const DriverHost* host);
using DriverUnloadFunction = void (*)();

}  // extern "C"
