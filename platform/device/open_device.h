// What a handle of CreateFileW stands for: a device, opened with some access, and what its opener
// shares with others meanwhile. Lives as long as the handle or a call on it. Any thread.
#pragma once

#include <windef.h>

#include <memory>
#include <string>
#include <string_view>

#include "platform/device/device_table.h"
#include "platform/kernel/handle_table.h"

namespace platform {

// The device of that name (any case), registered or answered by the resolver; null: there is none.
std::shared_ptr<Device> FindDevice(std::wstring_view name);

class OpenDevice final : public Object {
 public:
  // Null with `error` set to ERROR_SHARING_VIOLATION, when somebody has the device open in a way
  // that goes not with `access` and `share`, or to what the device itself answers.
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
  bool Enter();

  const std::wstring name_;  // in lower case
  const std::shared_ptr<Device> device_;
  const DWORD access_;
  const DWORD share_;
  bool entered_ = false;
};

}  // namespace platform
