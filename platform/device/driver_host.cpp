#include "platform/device/driver_host.h"

#include <windows.h>

#include <atomic>
#include <map>
#include <mutex>

#include "platform/device/ip_filter_driver.h"
#include "platform/device/module_driver.h"
#include "platform/kernel/encoding.h"
#include "platform/kernel/log.h"
#include "platform/kernel/modules.h"
#include "platform/kernel/path.h"

namespace platform {
namespace {

struct BuiltInDrivers {
  std::mutex mutex;
  std::map<std::wstring, DriverFactory, std::less<>> factories;  // by stem in lower case
};

std::atomic<bool> driverFilesAllowed = true;

BuiltInDrivers& BuiltIns() {
  static BuiltInDrivers& drivers = *new BuiltInDrivers;
  return drivers;
}

// Registered drivers come first, so that a test can replace the layer's own.
DriverFactory FindBuiltIn(const std::wstring& stem) {
  BuiltInDrivers& drivers = BuiltIns();
  const std::lock_guard lock(drivers.mutex);
  const auto found = drivers.factories.find(stem);
  if (found != drivers.factories.end()) return found->second;
  return stem == LowerName(kIpFilterImageStem) ? DriverFactory(LoadIpFilterDriver) : nullptr;
}

bool StartsWithName(std::wstring_view text, std::wstring_view prefix) {
  return EqualNames(text.substr(0, prefix.size()), prefix);
}

// The system's folders match in any case; the rest of the path is case-sensitive.
std::filesystem::path SystemPath(std::wstring_view belowRoot) {
  constexpr std::wstring_view kFolders[] = {L"System32\\", L"Drivers\\"};
  std::filesystem::path path = RootFolder();
  for (const std::wstring_view folder : kFolders) {
    if (!StartsWithName(belowRoot, folder)) break;
    path /= PosixPath(folder);
    belowRoot.remove_prefix(folder.size());
  }
  return path / PosixPath(belowRoot);
}

std::filesystem::path ImageFile(std::wstring_view imagePath) {
  constexpr std::wstring_view kRoots[] = {L"%SystemRoot%\\", L"\\SystemRoot\\"};
  for (const std::wstring_view root : kRoots) {
    if (StartsWithName(imagePath, root)) return SystemPath(imagePath.substr(root.size()));
  }
  const bool absolute = imagePath.starts_with(L'\\');
  return absolute ? PosixPath(imagePath) : SystemPath(imagePath);
}

// The shared object that stands for the image; empty when there is none.
std::filesystem::path SharedObjectOf(std::filesystem::path image) {
  if (!driverFilesAllowed) return {};
  const std::wstring fileName = Wide(image.filename().native());
  image.replace_extension(".so");
  std::error_code error;
  return std::filesystem::is_regular_file(image, error) ? image : FindSharedObject(fileName);
}

}  // namespace

void RegisterBuiltInDriver(std::wstring_view imageStem, DriverFactory factory) {
  BuiltInDrivers& drivers = BuiltIns();
  const std::lock_guard lock(drivers.mutex);
  drivers.factories.insert_or_assign(LowerName(imageStem), std::move(factory));
}

void UnregisterBuiltInDriver(std::wstring_view imageStem) {
  BuiltInDrivers& drivers = BuiltIns();
  const std::lock_guard lock(drivers.mutex);
  drivers.factories.erase(LowerName(imageStem));
}

void AllowDriverFiles(bool allowed) {
  driverFilesAllowed = allowed;
}

std::unique_ptr<LoadedDriver> LoadDriver(std::wstring_view imagePath, DriverEventSink events,
                                         DWORD& error) {
  const std::filesystem::path image = ImageFile(imagePath);
  if (const DriverFactory factory = FindBuiltIn(LowerName(Wide(image.stem().native())))) {
    return factory(error);
  }
  const std::filesystem::path file = SharedObjectOf(image);
  if (!file.empty()) return LoadModuleDriver(file, std::move(events), error);
  LogLine("no driver " + image.string() + ", nor a shared object for it beside the executable");
  error = ERROR_FILE_NOT_FOUND;
  return nullptr;
}

}  // namespace platform
