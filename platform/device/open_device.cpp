#include "platform/device/open_device.h"

#include <windows.h>

#include <algorithm>
#include <mutex>
#include <vector>

#include "platform/kernel/encoding.h"

namespace platform {
namespace {

struct OpenDevices {
  std::mutex mutex;
  std::vector<const OpenDevice*> all;
};

OpenDevices& Opens() {
  // Never destroyed: handles are closed by destructors of static objects.
  static OpenDevices& openDevices = *new OpenDevices;
  return openDevices;
}

// Whether everything in `access` is in `share`.
bool IsShared(DWORD access, DWORD share) {
  return ((access & GENERIC_READ) == 0 || (share & FILE_SHARE_READ) != 0) &&
         ((access & GENERIC_WRITE) == 0 || (share & FILE_SHARE_WRITE) != 0);
}

}  // namespace

std::shared_ptr<OpenDevice> OpenDevice::Create(std::wstring_view name,
                                               std::shared_ptr<Device> device, DWORD access,
                                               DWORD share, DWORD& error) {
  std::shared_ptr<OpenDevice> opened(
      new OpenDevice(LowerName(name), std::move(device), access, share));
  if (!opened->Register()) {
    error = ERROR_SHARING_VIOLATION;
    return nullptr;
  }
  error = opened->device_->Open(access);
  return error == NO_ERROR ? opened : nullptr;
}

OpenDevice::OpenDevice(std::wstring name, std::shared_ptr<Device> device, DWORD access, DWORD share)
    : name_(std::move(name)), device_(std::move(device)), access_(access), share_(share) {}

OpenDevice::~OpenDevice() {
  if (!registered_) return;
  const std::lock_guard lock(Opens().mutex);
  std::erase(Opens().all, this);
}

// An opening without access conflicts with no other, whatever the share modes.
bool OpenDevice::ConflictsWith(const OpenDevice& other) const {
  if (name_ != other.name_ || access_ == 0 || other.access_ == 0) return false;
  return !IsShared(access_, other.share_) || !IsShared(other.access_, share_);
}

bool OpenDevice::Register() {
  const std::lock_guard lock(Opens().mutex);
  const auto conflicts = [this](const OpenDevice* other) { return ConflictsWith(*other); };
  if (std::ranges::any_of(Opens().all, conflicts)) return false;
  Opens().all.push_back(this);
  registered_ = true;
  return true;
}

}  // namespace platform
