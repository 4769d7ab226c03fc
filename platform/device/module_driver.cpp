#include "platform/device/module_driver.h"

#include <windows.h>

#include <dlfcn.h>

#include <mutex>
#include <string>
#include <vector>

#include "platform/device/device_table.h"
#include "platform/device/driver_module.h"
#include "platform/kernel/api_result.h"
#include "platform/kernel/encoding.h"
#include "platform/kernel/log.h"
#include "platform/kernel/path.h"
#include "platform/kernel/trusted_path.h"

namespace platform {
namespace {

struct CloseModule {
  void operator()(void* module) const { ::dlclose(module); }
};
using ModulePointer = std::unique_ptr<void, CloseModule>;

// A device whose operations are functions of the shared object. An open handle may keep the device
// alive after the driver is unloaded, so it is retired before: then it calls no operation.
class ModuleDevice final : public Device {
 public:
  explicit ModuleDevice(const DriverDevice& operations) : operations_(operations) {}

  DWORD Open(DWORD access) override {
    const std::lock_guard lock(mutex_);
    return retired_ ? ERROR_FILE_NOT_FOUND : operations_.open(operations_.context, access);
  }

  DWORD Control(DWORD code, std::span<const std::byte> in, std::span<std::byte> out,
                DWORD& returned) override {
    const std::lock_guard lock(mutex_);
    if (retired_) return ERROR_GEN_FAILURE;
    return operations_.control(operations_.context, code, in.data(),
                               static_cast<std::uint32_t>(in.size()), out.data(),
                               static_cast<std::uint32_t>(out.size()), &returned);
  }

  // Waits for a running operation.
  void Retire() {
    const std::lock_guard lock(mutex_);
    retired_ = true;
  }

 private:
  std::mutex mutex_;
  const DriverDevice operations_;
  bool retired_ = false;
};

class ModuleDriver final : public LoadedDriver {
 public:
  ModuleDriver(ModulePointer module, DriverUnloadFunction unload, DriverEventSink events);
  ~ModuleDriver() override;
  ModuleDriver(const ModuleDriver&) = delete;
  ModuleDriver& operator=(const ModuleDriver&) = delete;

  DWORD Load(DriverLoadFunction load);
  DWORD CreateDevice(const DriverDevice& operations);
  void DeleteDevice(std::wstring_view name);
  void ReportEvent(std::string_view text) const { events_(text); }

 private:
  struct OwnDevice {
    std::wstring name;
    std::shared_ptr<ModuleDevice> device;
  };
  void DeleteDevices();

  std::vector<OwnDevice> devices_;
  ModulePointer module_;
  DriverUnloadFunction unload_;
  DriverEventSink events_;
  const std::string rootFolder_;
  DriverHost host_;
  bool loaded_ = false;
};

// The driver whose DriverLoad or DriverUnload runs on this thread: createDevice and deleteDevice
// have no parameter for the driver.
thread_local ModuleDriver* callingDriver = nullptr;

std::uint32_t HostCreateDevice(const DriverDevice* device) noexcept try {
  if (callingDriver == nullptr || device == nullptr || device->name == nullptr ||
      device->open == nullptr || device->control == nullptr) {
    return ERROR_INVALID_PARAMETER;
  }
  return callingDriver->CreateDevice(*device);
} catch (...) {
  return ErrorOfException();
}

void HostDeleteDevice(const wchar_t* name) noexcept {
  if (callingDriver != nullptr && name != nullptr) callingDriver->DeleteDevice(name);
}

void HostLogLine(const char* utf8) noexcept {
  if (utf8 != nullptr) LogLine(utf8);
}

void HostReportEvent(void* driver, const char* utf8) noexcept try {
  if (driver == nullptr || utf8 == nullptr) return;
  static_cast<const ModuleDriver*>(driver)->ReportEvent(utf8);
} catch (...) {
  ErrorOfException();
}

ModuleDriver::ModuleDriver(ModulePointer module, DriverUnloadFunction unload,
                           DriverEventSink events)
    : module_(std::move(module)),
      unload_(unload),
      events_(std::move(events)),
      rootFolder_(std::filesystem::absolute(RootFolder()).native()),
      host_{HostCreateDevice,   HostDeleteDevice, HostLogLine, HostReportEvent, this,
            rootFolder_.c_str()} {}

DWORD ModuleDriver::Load(DriverLoadFunction load) {
  callingDriver = this;
  const DWORD error = load(&host_);
  callingDriver = nullptr;
  loaded_ = error == NO_ERROR;
  return error;
}

ModuleDriver::~ModuleDriver() {
  DeleteDevices();
  if (!loaded_) return;
  callingDriver = this;
  unload_();
  callingDriver = nullptr;
}

DWORD ModuleDriver::CreateDevice(const DriverDevice& operations) {
  DriverDevice own = operations;
  own.name = nullptr;  // the caller owns the text
  auto device = std::make_shared<ModuleDevice>(own);
  if (!RegisterDevice(operations.name, device)) return ERROR_ALREADY_EXISTS;
  devices_.push_back({operations.name, std::move(device)});
  return NO_ERROR;
}

void ModuleDriver::DeleteDevice(std::wstring_view name) {
  std::erase_if(devices_, [name](const OwnDevice& own) {
    if (!EqualNames(own.name, name)) return false;
    UnregisterDevice(own.name);
    own.device->Retire();
    return true;
  });
}

void ModuleDriver::DeleteDevices() {
  while (!devices_.empty())
    DeleteDevice(std::wstring(devices_.back().name));
}

template <class Function>
Function EntryPoint(void* module, const char* name) {
  return reinterpret_cast<Function>(::dlsym(module, name));
}

// A process can load a shared object only once, so a driver cannot be loaded twice.
bool IsLoaded(const std::filesystem::path& file) {
  return ModulePointer(::dlopen(file.c_str(), RTLD_NOLOAD | RTLD_LAZY)) != nullptr;
}

}  // namespace

std::unique_ptr<LoadedDriver> LoadModuleDriver(const std::filesystem::path& file,
                                               DriverEventSink events, DWORD& error) {
  error = RequireTrusted(file, "driver not loaded");
  if (error != NO_ERROR) return nullptr;
  if (IsLoaded(file)) {
    error = ERROR_ALREADY_EXISTS;
    return nullptr;
  }
  ModulePointer module(::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL));
  if (module == nullptr) {
    LogLine(std::string("driver not loaded: ") + ::dlerror());
    error = ERROR_BAD_EXE_FORMAT;
    return nullptr;
  }
  const auto load = EntryPoint<DriverLoadFunction>(module.get(), "DriverLoad");
  const auto unload = EntryPoint<DriverUnloadFunction>(module.get(), "DriverUnload");
  if (load == nullptr || unload == nullptr) {
    LogLine(file.string() + " is no driver: it lacks DriverLoad or DriverUnload");
    error = ERROR_PROC_NOT_FOUND;
    return nullptr;
  }
  auto driver = std::make_unique<ModuleDriver>(std::move(module), unload, std::move(events));
  error = driver->Load(load);
  if (error != NO_ERROR) return nullptr;
  return driver;
}

}  // namespace platform
