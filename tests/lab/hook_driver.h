// The hook driver without the program: loaded into this process, or into one of its own inside a
// namespace, as a program loads it.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <string>
#include <vector>

#include "lab/network_namespace.h"
#include "platform/device/driver_module.h"

namespace lab {

inline constexpr std::uint32_t kBlock = 0x939C2094;
inline constexpr std::uint32_t kPass = 0x939C2098;
inline constexpr std::uint32_t kAllowLocal = 0x939C209C;
inline constexpr std::uint32_t kBlockLocal = 0x939C20A0;

// In this process; one at a time, in the namespace of the thread that uses it. The module stays
// loaded when the object goes, the driver does not.
class LoadedDriver {
 public:
  // Throws std::runtime_error when there is no module or it makes no device. In the root folder
  // lies the driver's option.
  explicit LoadedDriver(const std::string& rootFolder = "/nowhere");
  ~LoadedDriver();
  LoadedDriver(const LoadedDriver&) = delete;
  LoadedDriver& operator=(const LoadedDriver&) = delete;

  std::uint32_t Open();
  std::uint32_t Control(std::uint32_t code);
  // The lines that the driver wrote and the events that it reported since the last call.
  std::vector<std::string> TakeLines();

 private:
  DriverUnloadFunction unload_ = nullptr;
};

// In a process of its own.
class DriverProcess {
 public:
  explicit DriverProcess(const NetworkNamespace& place, const std::string& rootFolder = "/nowhere");
  ~DriverProcess();  // kills, if it still runs
  DriverProcess(const DriverProcess&) = delete;
  DriverProcess& operator=(const DriverProcess&) = delete;

  std::uint32_t Control(std::uint32_t code);
  bool Close(bool allowLocal);  // the two codes of a program that closes the gate
  bool OpenGate() { return Control(kPass) == 0; }

  void Kill();  // SIGKILL

 private:
  pid_t process_;
  FileDescriptor commands_;
};

}  // namespace lab
