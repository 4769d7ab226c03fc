// A window class whose procedure writes down what it gets, for tests of message order. One test's
// recording at a time; any thread.
#pragma once

#include <windows.h>

#include <functional>
#include <mutex>
#include <string>
#include <vector>

// "NCCREATE", "MOVE 10,20", "TIMER 7" and so on, or the number of any other message, each with the
// title that the window was made with before it when that is not empty: "child:DESTROY".
class Recording {
 public:
  // Registers the class "Recording".
  Recording();
  ~Recording();
  Recording(const Recording&) = delete;
  Recording& operator=(const Recording&) = delete;

  std::vector<std::string> Entries() const;
  void Add(const std::string& entry);
  void Clear();

  // Answers a message instead of the default procedure.
  using Answer = std::function<LRESULT(HWND, UINT, WPARAM, LPARAM)>;
  void On(UINT message, Answer answer);

  // Null when creation failed.
  static HWND Create(const std::wstring& title = {}, HWND parent = nullptr, DWORD style = 0);

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  void Record(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  const Answer* FindAnswer(UINT message) const;

  mutable std::mutex mutex_;
  std::vector<std::string> entries_;
  std::vector<std::pair<HWND, std::string>> titles_;
  std::vector<std::pair<UINT, Answer>> answers_;
};
