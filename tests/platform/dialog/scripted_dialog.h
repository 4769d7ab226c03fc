// A dialog procedure that a test fills with answers, and a record of what it got. One at a time.
#pragma once

#include <windows.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

// Makes a window that is never shown, so that the desktop stays the same from dialog to dialog.
void KeepDesktop();

class ScriptedDialog {
 public:
  ScriptedDialog();
  ~ScriptedDialog();
  ScriptedDialog(const ScriptedDialog&) = delete;
  ScriptedDialog& operator=(const ScriptedDialog&) = delete;

  using Answer = std::function<INT_PTR(HWND, WPARAM, LPARAM)>;
  void On(UINT message, Answer answer) { answers_[message] = std::move(answer); }
  // Ends the dialog with the number of whatever push button is pressed.
  void EndOnCommands();

  // Shows it until it ends.
  INT_PTR Run(LPCWSTR name, HWND owner = nullptr);
  HWND Create(LPCWSTR name, HWND owner = nullptr, LPARAM parameter = 0);

  HWND Window() const { return window_; }
  // Every message in order.
  const std::vector<UINT>& Messages() const { return messages_; }

  static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

 private:
  HWND window_ = nullptr;
  std::map<UINT, Answer> answers_;
  std::vector<UINT> messages_;
};
