// A dialog procedure that a test fills with answers, and a record of what it got. One at a time.
#pragma once

#include <windows.h>

#include <functional>
#include <map>
#include <vector>

#include "platform/kit/hidden_window.h"

// A dialog titled "Form", with a label, a field, three radio buttons, a check box and the buttons
// OK (the default), Cancel and Other.
LPCWSTR Form();

inline constexpr int kName = 1001;
inline constexpr int kFirstKind = 1002;
inline constexpr int kSecondKind = 1003;
inline constexpr int kThirdKind = 1004;
inline constexpr int kCheck = 1005;
inline constexpr int kOther = 1006;
// Of the field; nothing else has one.
inline constexpr DWORD kNameHelp = 0x80690001;

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
  INT_PTR Run(LPCWSTR name = Form(), HWND owner = nullptr) const;
  HWND Create(LPCWSTR name = Form(), LPARAM parameter = 0);

  HWND Window() const { return window_; }
  // Every message in order.
  const std::vector<UINT>& Messages() const { return messages_; }

  static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

 private:
  HiddenWindow keepsDesktop_;
  HWND window_ = nullptr;
  std::map<UINT, Answer> answers_;
  std::vector<UINT> messages_;
};

// Dispatches every message that waits.
void DispatchAll();
