#include "lab/hook_driver.h"

#include <dlfcn.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>

#include <filesystem>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <utility>

namespace lab {

namespace {

// The driver's host has no context, so what it is told is kept here.
std::optional<DriverDevice> device;
std::mutex mutex;  // of the lines: the driver's own thread writes some
std::vector<std::string> lines;
std::string root;

void AddLine(const char* line) {
  const std::lock_guard lock(mutex);
  lines.emplace_back(line);
}

DriverHost host = {
    .createDevice = [](const DriverDevice* created) -> std::uint32_t {
      device = *created;
      return 0;
    },
    .deleteDevice = [](const wchar_t*) { device.reset(); },
    .logLine = AddLine,
    .reportEvent = [](void*, const char* event) { AddLine(event); },
    .driver = nullptr,
    .rootFolder = nullptr,
};

int Serve(int commands, const std::string& rootFolder) {
  LoadedDriver driver(rootFolder);
  std::uint32_t code = 0;
  while (::recv(commands, &code, sizeof code, 0) == sizeof code) {
    const std::uint32_t result = driver.Control(code);
    if (::send(commands, &result, sizeof result, MSG_NOSIGNAL) < 0) return 1;
  }
  return 0;
}

}  // namespace

LoadedDriver::LoadedDriver(const std::string& rootFolder) {
  root = rootFolder;
  host.rootFolder = root.c_str();
  const auto folder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
  void* const module = ::dlopen((folder / "QGIpHook.so").c_str(), RTLD_NOW | RTLD_LOCAL);
  if (module == nullptr) throw std::runtime_error(::dlerror());
  const auto load = reinterpret_cast<DriverLoadFunction>(::dlsym(module, "DriverLoad"));
  unload_ = reinterpret_cast<DriverUnloadFunction>(::dlsym(module, "DriverUnload"));
  if (load == nullptr || unload_ == nullptr) throw std::runtime_error("not a driver");
  if (load(&host) != 0 || !device || std::wstring(device->name) != L"QGIpHook") {
    throw std::runtime_error("the driver makes no device");
  }
}

LoadedDriver::~LoadedDriver() {
  unload_();
}

std::uint32_t LoadedDriver::Open() {
  return device->open(device->context, 0);
}

std::uint32_t LoadedDriver::Control(std::uint32_t code) {
  std::uint32_t returned = 1;
  const auto result = device->control(device->context, code, nullptr, 0, nullptr, 0, &returned);
  if (returned != 0) throw std::runtime_error("the driver returned data");
  return result;
}

std::vector<std::string> LoadedDriver::TakeLines() {
  const std::lock_guard lock(mutex);
  return std::exchange(lines, {});
}

DriverProcess::DriverProcess(const NetworkNamespace& place, const std::string& rootFolder) {
  int ends[2];
  if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) {
    throw std::runtime_error("no socket pair");
  }
  commands_ = FileDescriptor(ends[0]);
  const FileDescriptor theirs(ends[1]);
  process_ = place.Start([&] {
    commands_ = {};
    return Serve(theirs.Get(), rootFolder);
  });
}

DriverProcess::~DriverProcess() {
  if (process_ > 0) Kill();
}

std::uint32_t DriverProcess::Control(std::uint32_t code) {
  std::uint32_t result = 0;
  if (::send(commands_.Get(), &code, sizeof code, MSG_NOSIGNAL) != sizeof code ||
      ::recv(commands_.Get(), &result, sizeof result, 0) != sizeof result) {
    throw std::runtime_error("the driver's process is gone");
  }
  return result;
}

bool DriverProcess::Close(bool allowLocal) {
  return Control(allowLocal ? kAllowLocal : kBlockLocal) == 0 && Control(kBlock) == 0;
}

void DriverProcess::Kill() {
  ::kill(process_, SIGKILL);
  ::waitpid(process_, nullptr, 0);
  process_ = 0;
}

}  // namespace lab
