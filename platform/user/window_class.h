// Window classes: those that a module instance registered, found for that instance only, and the
// system classes (user/control.h), found for every instance. Any thread.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

namespace platform {

struct SystemClass;

struct WindowClass {
  ATOM atom = 0;
  std::wstring name;
  // As registered, but with the actual instance and without pointers to the caller's strings.
  WNDCLASSEXW data{};
  // Null for a registered class.
  const SystemClass* system = nullptr;
};

// The class of that name, or of the atom that MAKEINTRESOURCEW passes; null when there is none. A
// registered class is preferred to a system class. A null instance means the executable's.
std::shared_ptr<const WindowClass> FindWindowClass(HINSTANCE instance, LPCWSTR name);

// Searches the system classes only; null when there is none.
std::shared_ptr<const WindowClass> FindSystemClass(LPCWSTR name);

}  // namespace platform
