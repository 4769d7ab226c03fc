#include "platform/user/desktop.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstdlib>
#include <string>

#include "platform/kernel/log.h"
#include "platform/kernel/modules.h"
#include "platform/kernel/trusted_path.h"
#include "platform/user/desktop_probe.h"
#include "platform/user/linux_display_offers.h"
#include "platform/user/window_creation.h"
#include "platform/user/window_list.h"

namespace platform {
namespace {

struct DesktopState {
  std::mutex mutex;
  std::unique_ptr<DesktopModule> module;
  std::shared_ptr<ThreadQueue> windowThread;
  // The first thread that found no desktop.
  std::weak_ptr<ThreadQueue> waiting;
  bool isUnreachable = false;  // the one that the environment names
  bool isSpent = false;
  std::function<void(bool isJoined)> follow;  // of the desktop that was joined later
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

// Sets isSpent when the toolkit fails on its way to a desktop that the probe has reached.
std::unique_ptr<DesktopModule> LoadModule(bool& isSpent) {
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
  std::unique_ptr<DesktopModule> module(reinterpret_cast<CreateDesktopModuleFunction>(entry)());
  isSpent = module == nullptr;
  return module;
}

// The caller holds the lock.
bool JoinNamed(DesktopState& state, const std::shared_ptr<ThreadQueue>& queue) {
  state.module = LoadModule(state.isSpent);
  state.isUnreachable = state.module == nullptr;
  if (state.isUnreachable) {
    LogLine("desktop: going on without one");
    return false;
  }
  state.windowThread = queue;
  queue->SetEventLoop(&state.module->Loop());
  return true;
}

void SetVariables(const DisplayVariables& variables) {
  for (const auto& [name, value] : variables) {
    if (value.empty()) {
      ::unsetenv(name.c_str());
    } else {
      ::setenv(name.c_str(), value.c_str(), 1);
    }
  }
}

bool JoinWith(const DisplayVariables& variables) {
  constexpr WPARAM kBitsPerPixel = 32;
  {
    DesktopState& state = State();
    const std::lock_guard lock(state.mutex);
    if (state.windowThread != nullptr || state.isSpent) return false;
    SetVariables(variables);
    if (!JoinNamed(state, CurrentQueue())) return false;
  }
  for (const auto& window : Windows().OfThread(*CurrentQueue()))
    GivePeer(*window);
  const SIZE screen = Desktop().Windows().ScreenSize();
  ::PostMessageW(HWND_BROADCAST, WM_DISPLAYCHANGE, kBitsPerPixel, MAKELPARAM(screen.cx, screen.cy));
  return true;
}

}  // namespace

bool JoinDesktop(const std::shared_ptr<ThreadQueue>& queue) {
  DesktopState& state = State();
  const std::lock_guard lock(state.mutex);
  if (state.windowThread != nullptr || state.isSpent) return false;
  if (!state.isUnreachable && EnvironmentNamesDesktop() && JoinNamed(state, queue)) return true;
  if (state.waiting.expired()) state.waiting = queue;
  ListenForDisplays();
  return false;
}

bool JoinDesktopLater(DisplayVariables variables, std::function<void(bool isJoined)> follow) {
  DesktopState& state = State();
  std::shared_ptr<ThreadQueue> waiting;
  {
    const std::lock_guard lock(state.mutex);
    waiting = state.waiting.lock();
  }
  if (waiting == nullptr) return false;
  waiting->Defer([variables = std::move(variables), follow = std::move(follow)] {
    const bool isJoined = JoinWith(variables);
    follow(isJoined);
    DesktopState& joined = State();
    const std::lock_guard lock(joined.mutex);
    if (isJoined) joined.follow = follow;
  });
  return true;
}

DesktopUse CurrentDesktopUse() {
  DesktopState& state = State();
  const std::lock_guard lock(state.mutex);
  if (state.isSpent) return DesktopUse::kSpent;
  return state.windowThread != nullptr ? DesktopUse::kJoined : DesktopUse::kNone;
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
  state.isSpent = true;
  if (state.follow) state.follow(false);
  ListenForDisplays();
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
