#include "platform/user/desktop.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstdlib>
#include <string>

#include "platform/kernel/log.h"
#include "platform/kernel/modules.h"
#include "platform/kernel/trusted_path.h"
#include "platform/user/desktop_probe.h"
#include "platform/user/window_list.h"

namespace platform {
namespace {

struct DesktopState {
  std::mutex mutex;
  std::unique_ptr<DesktopModule> module;
  std::shared_ptr<ThreadQueue> windowThread;
  bool unreachable = false;
};

DesktopState& State() {
  static DesktopState& state = *new DesktopState;
  return state;
}

bool EnvironmentNamesDesktop() {
  constexpr const char* kVariables[] = {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};
  return std::ranges::any_of(kVariables, [](const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr && *value != '\0';
  });
}

std::unique_ptr<DesktopModule> LoadModule() {
  const std::filesystem::path file = FindSharedObject(L"windesktop.dll");
  if (file.empty()) {
    LogLine("desktop: the desktop module is not installed");
    return nullptr;
  }
  for (const std::filesystem::path& each : {file, file.parent_path() / "windesktop_probe"}) {
    if (RequireTrusted(each, "desktop") != NO_ERROR) return nullptr;
  }
  const DesktopProbe probe(file.parent_path());
  if (!probe.HasReachedDesktop()) {
    LogLine("desktop: the desktop cannot be reached");
    return nullptr;
  }
  // Never unloaded: the toolkit leaves threads and exit handlers behind.
  void* library = ::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  void* entry = library != nullptr ? ::dlsym(library, kCreateDesktopModule) : nullptr;
  if (entry == nullptr) {
    LogLine(std::string("desktop: ") + ::dlerror());
    return nullptr;
  }
  return std::unique_ptr<DesktopModule>(reinterpret_cast<CreateDesktopModuleFunction>(entry)());
}

}  // namespace

bool JoinDesktop(const std::shared_ptr<ThreadQueue>& queue) {
  DesktopState& state = State();
  const std::lock_guard lock(state.mutex);
  if (state.windowThread != nullptr || state.unreachable || !EnvironmentNamesDesktop()) {
    return false;
  }
  state.module = LoadModule();
  state.unreachable = state.module == nullptr;
  if (state.unreachable) {
    LogLine("desktop: going on without one");
    return false;
  }
  state.windowThread = queue;
  queue->SetEventLoop(&state.module->Loop());
  return true;
}

void LeaveDesktop(const ThreadQueue& queue) {
  DesktopState& state = State();
  const std::lock_guard lock(state.mutex);
  if (state.windowThread.get() != &queue) return;
  state.windowThread->SetEventLoop(nullptr);
  state.module.reset();
  state.windowThread.reset();
}

void LoseDesktop(const ThreadQueue& queue) {
  DesktopState& state = State();
  const std::lock_guard lock(state.mutex);
  if (state.windowThread.get() != &queue) return;
  LogLine("desktop: the connection is broken; going on without one");
  state.windowThread->SetEventLoop(nullptr);
  state.windowThread.reset();
  state.unreachable = true;
  // The module and the windows' widgets are neither used nor destroyed from here on: without its
  // display connection no call into the toolkit is safe, destructors included.
  for (const auto& window : Windows().OfThread(queue))
    window->AbandonPeer();
}

std::shared_ptr<ThreadQueue> WindowThread() {
  DesktopState& state = State();
  const std::lock_guard lock(state.mutex);
  return state.windowThread;
}

bool IsWindowThread() {
  return WindowThread() == CurrentQueue();
}

DesktopModule& Desktop() {
  return *State().module;
}

}  // namespace platform
