#include "gate/kernel_driver.h"

#include <array>

namespace quillgate {
namespace {

// Maximum lengths, in characters.
constexpr std::size_t kNameLimit = 127;
constexpr std::size_t kFileLimit = 260;
constexpr std::size_t kDevicePathLimit = 255;
// Maximum length of a device path before the prefix is added.
constexpr std::size_t kPrefixedPathLimit = 251;
constexpr std::wstring_view kDevicePrefix = L"\\\\.\\";

std::wstring Cut(const wchar_t* text, std::size_t limit) {
  return std::wstring(text).substr(0, limit);
}

// Empty when it is unknown or longer than MAX_PATH.
std::wstring CurrentFolder() {
  std::array<wchar_t, MAX_PATH> folder{};
  const DWORD length = ::GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data());
  return length < folder.size() ? std::wstring(folder.data(), length) : std::wstring();
}

// Null on failure; the calls that use it then fail.
ServiceHandle OpenManager() {
  return ServiceHandle(::OpenSCManagerW(nullptr, nullptr, SC_MANAGER_ALL_ACCESS));
}

ServiceHandle OpenService(SC_HANDLE manager, const std::wstring& name) {
  return ServiceHandle(::OpenServiceW(manager, name.c_str(), SERVICE_ALL_ACCESS));
}

}  // namespace

DWORD KernelDriver::Open(const wchar_t* name, DWORD fileFlags, const wchar_t* file,
                         const wchar_t* devicePath) {
  fileFlags_ = fileFlags;
  name_ = Cut(name, kNameLimit);
  file_ = ResolveFile(file);
  devicePath_ = ResolveDevicePath(devicePath);

  // Failures of the service steps are ignored. Deliberate, see docs/behaviour.md.
  const ServiceHandle manager = OpenManager();
  if (!installedOnly_) EnsureService(manager.Get());
  StartDriver(manager.Get());
  error_ = OpenDevice();
  return error_;
}

std::wstring KernelDriver::ResolveFile(const wchar_t* file) const {
  if (file != nullptr) return Cut(file, kFileLimit);
  // The current folder of a service is the system folder; a driver file there is preferred.
  const std::wstring local = CurrentFolder() + L"\\" + name_ + L".sys";
  const bool exists = ::GetFileAttributesW(local.c_str()) != INVALID_FILE_ATTRIBUTES;
  // The variable is expanded by the service control manager, which knows the folder at boot.
  const std::wstring installed = L"%SystemRoot%\\system32\\Drivers\\" + name_ + L".sys";
  return (exists ? local : installed).substr(0, kFileLimit);
}

std::wstring KernelDriver::ResolveDevicePath(const wchar_t* devicePath) const {
  std::wstring path = Cut(devicePath != nullptr ? devicePath : name_.c_str(), kDevicePathLimit);
  if (path.ends_with(L'\\')) return path;
  return path.substr(0, kPrefixedPathLimit).insert(0, kDevicePrefix);
}

void KernelDriver::EnsureService(SC_HANDLE manager) {
  const ServiceHandle created(
      ::CreateServiceW(manager, name_.c_str(), name_.c_str(), SERVICE_ALL_ACCESS,
                       SERVICE_KERNEL_DRIVER, SERVICE_SYSTEM_START, SERVICE_ERROR_NORMAL,
                       file_.c_str(), nullptr, nullptr, nullptr, nullptr, nullptr));
  if (created.IsValid() || !reconfigureExisting_) return;
  // A new service starts with the system; an existing one is set to start on demand.
  const ServiceHandle service = OpenService(manager, name_);
  ::ChangeServiceConfigW(service.Get(), SERVICE_KERNEL_DRIVER, SERVICE_DEMAND_START,
                         SERVICE_ERROR_NORMAL, file_.c_str(), nullptr, nullptr, nullptr, nullptr,
                         nullptr, name_.c_str());
}

void KernelDriver::StartDriver(SC_HANDLE manager) {
  const ServiceHandle service = OpenService(manager, name_);
  if (::StartServiceW(service.Get(), 0, nullptr)) return;
  // A driver that was already running is not stopped, throughout the life of this object.
  if (::GetLastError() == ERROR_SERVICE_ALREADY_RUNNING) stopOnClose_ = false;
}

DWORD KernelDriver::OpenDevice() {
  device_.Reset();
  device_.Reset(::CreateFileW(devicePath_.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                              OPEN_EXISTING, fileFlags_, nullptr));
  return device_.IsValid() ? NO_ERROR : ::GetLastError();
}

void KernelDriver::Close() {
  device_.Reset();
  if (!stopOnClose_) return;
  const ServiceHandle manager = OpenManager();
  if (!manager.IsValid()) return;
  const ServiceHandle service = OpenService(manager.Get(), name_);
  SERVICE_STATUS status{};
  ::ControlService(service.Get(), SERVICE_CONTROL_STOP, &status);
}

}  // namespace quillgate
