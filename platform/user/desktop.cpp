#include "platform/user/desktop.h"

#include <dlfcn.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "platform/kernel/log.h"
#include "platform/kernel/modules.h"

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

// The toolkit ends the process when it cannot reach the desktop, so a process of its own tries.
bool CanReachDesktop(const std::filesystem::path& folder) {
  std::string program = (folder / "windesktop_probe").string();
  char* arguments[] = {program.data(), nullptr};
  pid_t child = 0;
  const int error = ::posix_spawn(&child, program.c_str(), nullptr, nullptr, arguments, ::environ);
  if (error != 0) return false;
  int status = 0;
  while (::waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) return false;
  }
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

std::unique_ptr<DesktopModule> LoadModule() {
  const std::filesystem::path file = FindSharedObject(L"windesktop.dll");
  if (file.empty()) {
    LogLine("desktop: the desktop module is not installed");
    return nullptr;
  }
  if (!CanReachDesktop(file.parent_path())) {
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

std::shared_ptr<ThreadQueue> WindowThread() {
  DesktopState& state = State();
  const std::lock_guard lock(state.mutex);
  return state.windowThread;
}

DesktopModule& Desktop() {
  return *State().module;
}

}  // namespace platform
