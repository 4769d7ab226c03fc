// System classes as window classes.
#include <algorithm>
#include <string_view>
#include <vector>

#include "platform/kernel/api_result.h"
#include "platform/user/atom_table.h"
#include "platform/user/window.h"

namespace platform {
namespace {

using ClassPointer = std::shared_ptr<const WindowClass>;

// The window procedure of all system classes: the window's control handles the message.
LRESULT CALLBACK ControlProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) try {
  // The reference keeps the window and its control alive when the message destroys the window.
  const auto window = FindWindowOf(handle);
  if (window == nullptr) return 0;
  if (window->SystemControl() != nullptr) {
    if (const auto result = window->SystemControl()->Answer(message, wParam, lParam))
      return *result;
  }
  return ::DefWindowProcW(handle, message, wParam, lParam);
} catch (...) {
  return FailedCall(LRESULT{0});
}

// The number in a name of the form "#32770", as documented for atoms; 0 for any other name.
ATOM NumberIn(std::wstring_view name) {
  unsigned number = 0;
  if (name.size() < 2 || name.size() > 6 || name[0] != L'#') return 0;
  for (const wchar_t digit : name.substr(1)) {
    if (digit < L'0' || digit > L'9') return 0;
    number = number * 10 + static_cast<unsigned>(digit - L'0');
  }
  return number <= 0xFFFF ? static_cast<ATOM>(number) : ATOM{0};
}

ATOM AtomOfSystemClass(std::wstring_view name) {
  const ATOM number = NumberIn(name);
  return number != 0 ? number : Atoms().Add(name);
}

std::vector<ClassPointer> MakeClasses() {
  std::vector<ClassPointer> classes;
  static const auto& systemClasses = *new std::vector<SystemClass>(SystemClasses());
  for (const SystemClass& each : systemClasses) {
    auto windowClass = std::make_shared<WindowClass>();
    windowClass->name = each.name;
    windowClass->atom = AtomOfSystemClass(each.name);
    windowClass->data.cbSize = sizeof windowClass->data;
    windowClass->data.lpfnWndProc = ControlProcedure;
    windowClass->system = &each;
    classes.push_back(std::move(windowClass));
  }
  return classes;
}

ATOM AtomOf(LPCWSTR name) {
  if (name == nullptr) return 0;
  if (IS_INTRESOURCE(name)) return LOWORD(reinterpret_cast<ULONG_PTR>(name));
  const ATOM number = NumberIn(name);
  return number != 0 ? number : Atoms().Find(name);
}

}  // namespace

std::shared_ptr<const WindowClass> FindSystemClass(LPCWSTR name) {
  static const auto& classes = *new std::vector<ClassPointer>(MakeClasses());
  const ATOM atom = AtomOf(name);
  if (atom == 0) return nullptr;
  const auto found = std::ranges::find(classes, atom, &WindowClass::atom);
  return found != classes.end() ? *found : nullptr;
}

}  // namespace platform
