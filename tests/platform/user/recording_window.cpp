#include "platform/user/recording_window.h"

#include <algorithm>
#include <atomic>

namespace {

constexpr const wchar_t* kClassName = L"Recording";
std::atomic<Recording*> current = nullptr;

std::string NameOf(UINT message, WPARAM wParam, LPARAM lParam) {
  const auto pair = std::to_string(static_cast<SHORT>(LOWORD(lParam))) + "," +
                    std::to_string(static_cast<SHORT>(HIWORD(lParam)));
  switch (message) {
    case WM_MOVE:
      return "MOVE " + pair;
    case WM_SIZE:
      return "SIZE " + pair;
    case WM_SHOWWINDOW:
      return "SHOWWINDOW " + std::to_string(wParam);
    case WM_ENABLE:
      return "ENABLE " + std::to_string(wParam);
    case WM_ACTIVATE:
      return "ACTIVATE " + std::to_string(LOWORD(wParam));
    case WM_CANCELMODE:
      return "CANCELMODE";
    case WM_SETFOCUS:
      return "SETFOCUS";
    case WM_KILLFOCUS:
      return "KILLFOCUS";
    case WM_CLOSE:
      return "CLOSE";
    case WM_PAINT:
      return "PAINT";
    case WM_ERASEBKGND:
      return "ERASEBKGND";
    case WM_NCCREATE:
      return "NCCREATE";
    case WM_CREATE:
      return "CREATE";
    case WM_DESTROY:
      return "DESTROY";
    case WM_NCDESTROY:
      return "NCDESTROY";
    case WM_TIMER:
      return "TIMER " + std::to_string(wParam);
    default:
      return std::to_string(message);
  }
}

}  // namespace

Recording::Recording() {
  WNDCLASSEXW windowClass{};
  windowClass.cbSize = sizeof windowClass;
  windowClass.lpfnWndProc = Procedure;
  windowClass.hInstance = ::GetModuleHandleW(nullptr);
  windowClass.lpszClassName = kClassName;
  ::RegisterClassExW(&windowClass);
  current = this;
}

Recording::~Recording() {
  ::UnregisterClassW(kClassName, ::GetModuleHandleW(nullptr));
  current = nullptr;
}

std::vector<std::string> Recording::Entries() const {
  const std::lock_guard lock(mutex_);
  return entries_;
}

void Recording::Add(const std::string& entry) {
  const std::lock_guard lock(mutex_);
  entries_.push_back(entry);
}

void Recording::Clear() {
  const std::lock_guard lock(mutex_);
  entries_.clear();
}

void Recording::On(UINT message, Answer answer) {
  answers_.emplace_back(message, std::move(answer));
}

HWND Recording::Create(const std::wstring& title, HWND parent, DWORD style) {
  return ::CreateWindowExW(0, kClassName, title.c_str(), style, 0, 0, 0, 0, parent, nullptr,
                           ::GetModuleHandleW(nullptr), nullptr);
}

void Recording::Record(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const std::lock_guard lock(mutex_);
  if (message == WM_NCCREATE) {
    const std::wstring title = reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpszName;
    titles_.emplace_back(window, std::string(title.begin(), title.end()));
  }
  const auto found =
      std::ranges::find(titles_, window, [](const auto& each) { return each.first; });
  const bool named = found != titles_.end() && !found->second.empty();
  entries_.push_back((named ? found->second + ":" : "") + NameOf(message, wParam, lParam));
}

const Recording::Answer* Recording::FindAnswer(UINT message) const {
  const auto found =
      std::ranges::find(answers_, message, [](const auto& each) { return each.first; });
  return found != answers_.end() ? &found->second : nullptr;
}

LRESULT CALLBACK Recording::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  Recording* recording = current.load();
  if (recording == nullptr) return ::DefWindowProcW(window, message, wParam, lParam);
  recording->Record(window, message, wParam, lParam);
  const Answer* answer = recording->FindAnswer(message);
  return answer != nullptr ? (*answer)(window, message, wParam, lParam)
                           : ::DefWindowProcW(window, message, wParam, lParam);
}
