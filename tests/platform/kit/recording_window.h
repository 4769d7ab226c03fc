// A window class whose procedure writes down what it gets, for tests of message order. One test's
// recording at a time; any thread.
#pragma once

#include <windows.h>

#include <atomic>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

// "NCCREATE", "MOVE 10,20", "TIMER 7" and so on, or the number of any other message, each with the
// title that the window was made with before it when that is not empty: "child:DESTROY".
class Recording {
 public:
  // Registers the class "Recording".
  Recording() {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = Procedure;
    windowClass.hInstance = ::GetModuleHandleW(nullptr);
    windowClass.lpszClassName = kClass;
    ::RegisterClassW(&windowClass);
    current_ = this;
  }
  // Destroys what is left of the calling thread's windows.
  ~Recording() {
    current_ = nullptr;
    for (const auto& [window, title] : titles_)
      ::DestroyWindow(window);
    ::UnregisterClassW(kClass, ::GetModuleHandleW(nullptr));
  }
  Recording(const Recording&) = delete;
  Recording& operator=(const Recording&) = delete;

  // What was recorded since the last time.
  std::vector<std::string> Take() {
    const std::lock_guard lock(mutex_);
    return std::exchange(entries_, {});
  }

  // Answers a message instead of the default procedure.
  using Answer = std::function<LRESULT(HWND, UINT, WPARAM, LPARAM)>;
  void On(UINT message, Answer answer) { answers_[message] = std::move(answer); }
  void On(UINT message, LRESULT answer) {
    On(message, [answer](HWND, UINT, WPARAM, LPARAM) { return answer; });
  }

  // Null when creation failed.
  static HWND Create(const std::wstring& title = {}, HWND parent = nullptr, DWORD style = 0,
                     RECT place = {}) {
    return ::CreateWindowExW(0, kClass, title.c_str(), style, place.left, place.top,
                             place.right - place.left, place.bottom - place.top, parent, nullptr,
                             ::GetModuleHandleW(nullptr), nullptr);
  }

 private:
  static constexpr const wchar_t* kClass = L"Recording";

  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    Recording* const recording = current_;
    if (recording == nullptr) return ::DefWindowProcW(window, message, wParam, lParam);
    recording->Record(window, message, wParam, lParam);
    const auto found = recording->answers_.find(message);
    return found != recording->answers_.end() ? found->second(window, message, wParam, lParam)
                                              : ::DefWindowProcW(window, message, wParam, lParam);
  }

  void Record(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const std::lock_guard lock(mutex_);
    if (message == WM_NCCREATE) {
      const std::wstring title = reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpszName;
      titles_[window] = title.empty() ? "" : std::string(title.begin(), title.end()) + ":";
    }
    entries_.push_back(titles_[window] + NameOf(message, wParam, lParam));
  }

  static std::string NameOf(UINT message, WPARAM wParam, LPARAM lParam) {
    static const std::map<UINT, std::string> kNames = {
        {WM_NCCREATE, "NCCREATE"},   {WM_CREATE, "CREATE"},         {WM_DESTROY, "DESTROY"},
        {WM_NCDESTROY, "NCDESTROY"}, {WM_CANCELMODE, "CANCELMODE"}, {WM_SETFOCUS, "SETFOCUS"},
        {WM_KILLFOCUS, "KILLFOCUS"}};
    static const std::map<UINT, std::string> kNumbered = {{WM_SHOWWINDOW, "SHOWWINDOW "},
                                                          {WM_ENABLE, "ENABLE "},
                                                          {WM_ACTIVATE, "ACTIVATE "},
                                                          {WM_TIMER, "TIMER "}};
    static const std::map<UINT, std::string> kPlaced = {{WM_MOVE, "MOVE "}, {WM_SIZE, "SIZE "}};
    if (kNames.contains(message)) return kNames.at(message);
    if (kNumbered.contains(message)) return kNumbered.at(message) + std::to_string(LOWORD(wParam));
    if (!kPlaced.contains(message)) return std::to_string(message);
    return kPlaced.at(message) + std::to_string(static_cast<SHORT>(LOWORD(lParam))) + "," +
           std::to_string(static_cast<SHORT>(HIWORD(lParam)));
  }

  static inline std::atomic<Recording*> current_ = nullptr;
  std::mutex mutex_;
  std::vector<std::string> entries_;
  std::map<HWND, std::string> titles_;
  std::map<UINT, Answer> answers_;
};
