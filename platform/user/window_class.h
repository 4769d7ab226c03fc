// Window classes: those that a module instance registered, found for that instance alone, and those
// of the system (user/control.h), found for every instance. Any thread.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

namespace platform {

struct SystemClass;

struct WindowClass {
  ATOM atom = 0;
  std::wstring name;
  // As registered, but with the true instance and without the caller's strings.
  WNDCLASSEXW data{};
  // Null for a registered class.
  const SystemClass* system = nullptr;
};

// The class of that name, or of that atom as MAKEINTRESOURCEW gives it; null when there is none. A
// registered class comes before one of the system. An instance of null means the executable's.
std::shared_ptr<const WindowClass> FindWindowClass(HINSTANCE instance, LPCWSTR name);

// The class of the system alone; null when there is none.
std::shared_ptr<const WindowClass> FindSystemClass(LPCWSTR name);

}  // namespace platform
