#include "platform/user/window_class.h"

#include <algorithm>
#include <mutex>
#include <vector>

#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"
#include "platform/user/atom_table.h"
#include "platform/user/window.h"

namespace platform {
namespace {

constexpr std::size_t kLongestName = 256;
constexpr UINT kGlobalClass = 0x4000;  // CS_GLOBALCLASS

struct ClassRegistry {
  std::mutex mutex;
  std::vector<std::shared_ptr<const WindowClass>> classes;
};

ClassRegistry& Registry() {
  static ClassRegistry& registry = *new ClassRegistry;
  return registry;
}

HINSTANCE InstanceOrExecutable(HINSTANCE instance) {
  return instance != nullptr ? instance : ::GetModuleHandleW(nullptr);
}

ATOM AtomOf(LPCWSTR name) {
  if (name == nullptr) return 0;
  if (IS_INTRESOURCE(name)) return LOWORD(reinterpret_cast<ULONG_PTR>(name));
  return Atoms().Find(name);
}

auto Locate(std::vector<std::shared_ptr<const WindowClass>>& classes, HINSTANCE instance,
            ATOM atom) {
  return std::ranges::find_if(classes, [&](const auto& each) {
    return each->atom == atom && each->data.hInstance == instance;
  });
}

bool HasUnsupportedParts(const WNDCLASSEXW& data) {
  const bool unsupported = data.cbClsExtra != 0 || data.cbWndExtra != 0 ||
                           data.lpszMenuName != nullptr || (data.style & kGlobalClass) != 0;
  if (unsupported) LogLine("window class: extra memory, menus and global classes: not supported");
  return unsupported;
}

bool IsValid(const WNDCLASSEXW& data) {
  if (data.lpfnWndProc == nullptr || data.lpszClassName == nullptr) return false;
  if (IS_INTRESOURCE(data.lpszClassName) || data.lpszClassName[0] == L'\0') return false;
  return std::wstring_view(data.lpszClassName).size() <= kLongestName;
}

ATOM Register(WNDCLASSEXW data) {
  if (!IsValid(data) || HasUnsupportedParts(data)) {
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return 0;
  }
  auto windowClass = std::make_shared<WindowClass>();
  windowClass->name = data.lpszClassName;
  windowClass->atom = Atoms().Add(windowClass->name);
  data.hInstance = InstanceOrExecutable(data.hInstance);
  data.lpszClassName = nullptr;
  windowClass->data = data;
  ClassRegistry& registry = Registry();
  const std::lock_guard lock(registry.mutex);
  const bool exists =
      Locate(registry.classes, data.hInstance, windowClass->atom) != registry.classes.end();
  if (windowClass->atom == 0 || exists) {
    ::SetLastError(exists ? ERROR_CLASS_ALREADY_EXISTS : ERROR_NOT_ENOUGH_MEMORY);
    return 0;
  }
  registry.classes.push_back(windowClass);
  return windowClass->atom;
}

}  // namespace

std::shared_ptr<const WindowClass> FindWindowClass(HINSTANCE instance, LPCWSTR name) {
  const HINSTANCE owner = InstanceOrExecutable(instance);
  const ATOM atom = AtomOf(name);
  ClassRegistry& registry = Registry();
  const std::lock_guard lock(registry.mutex);
  const auto found = Locate(registry.classes, owner, atom);
  return found != registry.classes.end() ? *found : FindSystemClass(name);
}

}  // namespace platform

using namespace platform;

ATOM WINAPI RegisterClassExW(const WNDCLASSEXW* windowClass) try {
  if (windowClass == nullptr || windowClass->cbSize != sizeof(WNDCLASSEXW)) {
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return 0;
  }
  return Register(*windowClass);
} catch (...) {
  return FailedCall(ATOM{0});
}

ATOM WINAPI RegisterClassW(const WNDCLASSW* windowClass) try {
  if (windowClass == nullptr) {
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return 0;
  }
  const WNDCLASSW& given = *windowClass;
  return Register({sizeof(WNDCLASSEXW), given.style, given.lpfnWndProc, given.cbClsExtra,
                   given.cbWndExtra, given.hInstance, given.hIcon, given.hCursor,
                   given.hbrBackground, given.lpszMenuName, given.lpszClassName, nullptr});
} catch (...) {
  return FailedCall(ATOM{0});
}

BOOL WINAPI UnregisterClassW(LPCWSTR className, HINSTANCE instance) try {
  const HINSTANCE owner = InstanceOrExecutable(instance);
  const ATOM atom = AtomOf(className);
  ClassRegistry& registry = Registry();
  const std::lock_guard lock(registry.mutex);
  const auto found = Locate(registry.classes, owner, atom);
  if (found == registry.classes.end()) {
    ::SetLastError(ERROR_CLASS_DOES_NOT_EXIST);
    return FALSE;
  }
  if (ClassHasWindows(**found)) {
    ::SetLastError(ERROR_CLASS_HAS_WINDOWS);
    return FALSE;
  }
  registry.classes.erase(found);
  return TRUE;
} catch (...) {
  return FailedCall(FALSE);
}

BOOL WINAPI GetClassInfoW(HINSTANCE instance, LPCWSTR className, WNDCLASSW* windowClass) try {
  // A null instance means the system classes only.
  const auto found =
      instance != nullptr ? FindWindowClass(instance, className) : FindSystemClass(className);
  if (found == nullptr || windowClass == nullptr) {
    ::SetLastError(found == nullptr ? ERROR_CLASS_DOES_NOT_EXIST : ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  const WNDCLASSEXW& data = found->data;
  *windowClass = {data.style, data.lpfnWndProc, data.cbClsExtra,    data.cbWndExtra, data.hInstance,
                  data.hIcon, data.hCursor,     data.hbrBackground, nullptr,         className};
  return TRUE;
} catch (...) {
  return FailedCall(FALSE);
}
