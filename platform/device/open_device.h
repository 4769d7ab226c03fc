// The object of a handle that CreateFileW returned: a device with the access and the share mode of
// the opening. Lives as long as the handle or a call on it. Any thread.
#pragma once

#include <windef.h>

#include <memory>
#include <string>
#include <string_view>

#include "platform/device/device_table.h"
#include "platform/kernel/handle_table.h"

namespace platform {

// The device of that name: a registered one (any case), else the resolver's. Null when there is
// none.
std::shared_ptr<Device> FindDevice(std::wstring_view name);

class OpenDevice final : public Object {
 public:
  // Null with `error` set: ERROR_SHARING_VIOLATION when another opening conflicts with `access` and
  // `share`, or the error of Device::Open.
  static std::shared_ptr<OpenDevice> Create(std::wstring_view name, std::shared_ptr<Device> device,
                                            DWORD access, DWORD share, DWORD& error);
  ~OpenDevice() override;
  OpenDevice(const OpenDevice&) = delete;
  OpenDevice& operator=(const OpenDevice&) = delete;

  Device& Target() const { return *device_; }
  DWORD Access() const { return access_; }

 private:
  OpenDevice(std::wstring name, std::shared_ptr<Device> device, DWORD access, DWORD share);
  bool ConflictsWith(const OpenDevice& other) const;
  bool Register();

  const std::wstring name_;  // in lower case
  const std::shared_ptr<Device> device_;
  const DWORD access_;
  const DWORD share_;
  bool registered_ = false;
};

}  // namespace platform
