// Registered window classes. A class belongs to the module instance that registered it; there are
// no classes of the system and none that are global. Any thread.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

namespace platform {

struct WindowClass {
  ATOM atom = 0;
  std::wstring name;
  // As registered, but with the true instance and without the caller's strings.
  WNDCLASSEXW data{};
};

// The class of that name, or of that atom as MAKEINTRESOURCEW gives it; null when there is none. An
// instance of null means the executable's.
std::shared_ptr<const WindowClass> FindWindowClass(HINSTANCE instance, LPCWSTR name);

}  // namespace platform
