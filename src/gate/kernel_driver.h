// A kernel driver that the program needs: creates its service when it is missing, starts it, opens
// its device, and stops it again if this object started it. Used by one thread at a time.
#pragma once

#include <windows.h>

#include <string>

#include "handles/handle.h"

namespace quillgate {

class KernelDriver {
 public:
  KernelDriver() = default;
  KernelDriver(const KernelDriver&) = delete;
  KernelDriver& operator=(const KernelDriver&) = delete;

  // Whether Open reconfigures an existing service to start on demand.
  void SetReconfigureExisting(bool reconfigure) { reconfigureExisting_ = reconfigure; }

  // Whether Open uses an existing service only: none is created or reconfigured, and without one
  // the driver is not started.
  void SetInstalledOnly(bool installedOnly) { installedOnly_ = installedOnly; }

  // Starts the driver and opens its device; closes a device that was open before. `file` is the
  // driver's image for the service control manager; null: the name with ".sys", in the current
  // folder if it exists there, otherwise in the system's drivers folder. `devicePath` null: the
  // name. Returns 0 or the error of opening the device. Only that step counts: deliberate, see
  // docs/behaviour.md.
  DWORD Open(const wchar_t* name, DWORD fileFlags, const wchar_t* file, const wchar_t* devicePath);

  // Closes the device, and stops the service unless it was running before. Never fails.
  void Close();

  HANDLE Device() const { return device_.Get(); }
  DWORD Error() const { return error_; }

 private:
  std::wstring ResolveFile(const wchar_t* file) const;
  std::wstring ResolveDevicePath(const wchar_t* devicePath) const;
  void EnsureService(SC_HANDLE manager);
  void StartDriver(SC_HANDLE manager);
  DWORD OpenDevice();

  FileHandle device_;
  std::wstring name_;
  std::wstring file_;
  std::wstring devicePath_;
  DWORD error_ = 0;
  DWORD fileFlags_ = 0;
  bool stopOnClose_ = true;
  bool reconfigureExisting_ = false;
  bool installedOnly_ = false;
};

}  // namespace quillgate
