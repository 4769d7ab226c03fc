// The classes of the system as window classes.
#include <algorithm>
#include <string_view>
#include <vector>

#include "platform/kernel/api_result.h"
#include "platform/user/atom_table.h"
#include "platform/user/window.h"

namespace platform {
namespace {

using ClassPointer = std::shared_ptr<const WindowClass>;

// Every window of a class of the system has this procedure; its control answers.
LRESULT CALLBACK AnswerByControl(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) try {
  // Held, with its control, for the case that the message ends the window.
  const auto window = FindWindowOf(handle);
  if (window == nullptr) return 0;
  if (window->SystemControl() != nullptr) {
    if (const auto answer = window->SystemControl()->Answer(message, wParam, lParam))
      return *answer;
  }
  return ::DefWindowProcW(handle, message, wParam, lParam);
} catch (...) {
  return FailedCall(LRESULT{0});
}

// A name of the form "#32770" is a number, as documented for atoms.
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
  for (const SystemClass& each : SystemClasses()) {
    auto made = std::make_shared<WindowClass>();
    made->name = each.name;
    made->atom = AtomOfSystemClass(each.name);
    made->data.cbSize = sizeof made->data;
    made->data.lpfnWndProc = AnswerByControl;
    made->system = &each;
    classes.push_back(std::move(made));
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
