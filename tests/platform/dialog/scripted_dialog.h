// A dialog procedure that a test fills with answers, and a record of what it got. One at a time.
#pragma once

#include <windows.h>

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/dialog/template_bytes.h"
#include "platform/kit/hidden_window.h"

inline constexpr int kName = 1001;
inline constexpr int kFirstKind = 1002;
inline constexpr int kSecondKind = 1003;
inline constexpr int kThirdKind = 1004;
inline constexpr int kCheck = 1005;
inline constexpr int kOther = 1006;
// Of the field; nothing else has one.
inline constexpr DWORD kNameHelp = 0x80690001;

// A dialog titled "Form", with a label, a field, three radio buttons, a check box and the buttons
// OK (the default), Cancel and Other.
inline LPCWSTR Form() {
  static const LPCWSTR name = AddTemplate(
      TemplateBytes(kDialogStyle, {0, 0, 200, 120}, u"Form")
          .Item(u"Static", 1000, kItem, {5, 5, 60, 10}, u"&Name:")
          .Item(u"Edit", kName, kStop, {70, 5, 100, 14}, u"text", kNameHelp)
          .Item(kButton, kFirstKind, kStop | WS_GROUP | BS_AUTORADIOBUTTON, {5, 25, 60, 12}, u"One")
          .Item(kButton, kSecondKind, kItem | BS_AUTORADIOBUTTON, {5, 38, 60, 12}, u"Two")
          .Item(kButton, kThirdKind, kItem | BS_AUTORADIOBUTTON, {5, 51, 60, 12}, u"Three")
          .Item(kButton, kCheck, kStop | WS_GROUP | BS_AUTOCHECKBOX, {5, 70, 80, 12}, u"&Check")
          .Item(kButton, IDOK, kStop | BS_DEFPUSHBUTTON, {5, 95, 50, 14}, u"OK")
          .Item(kButton, IDCANCEL, kStop, {60, 95, 50, 14}, u"Cancel")
          .Item(kButton, kOther, kStop, {115, 95, 50, 14}, u"&Other"));
  return name;
}

class ScriptedDialog {
 public:
  ScriptedDialog() { current_ = this; }
  ~ScriptedDialog() {
    if (::IsWindow(window_)) ::DestroyWindow(window_);
    current_ = nullptr;
  }
  ScriptedDialog(const ScriptedDialog&) = delete;
  ScriptedDialog& operator=(const ScriptedDialog&) = delete;

  using Answer = std::function<INT_PTR(HWND, WPARAM, LPARAM)>;
  void On(UINT message, Answer answer) { answers_[message] = std::move(answer); }

  // Shows it until it ends.
  INT_PTR Run(LPCWSTR name = Form(), HWND owner = nullptr) const {
    return ::DialogBoxParamW(nullptr, name, owner, Procedure, 0);
  }
  HWND Create(LPCWSTR name = Form(), LPARAM parameter = 0) {
    window_ = ::CreateDialogParamW(nullptr, name, nullptr, Procedure, parameter);
    return window_;
  }
  HWND Show() {
    ::ShowWindow(Create(), SW_SHOW);
    return window_;
  }

  HWND Window() const { return window_; }
  // Every message in order.
  const std::vector<UINT>& Messages() const { return messages_; }

  static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (current_ == nullptr) return FALSE;
    current_->window_ = dialog;
    current_->messages_.push_back(message);
    const auto answer = current_->answers_.find(message);
    return answer != current_->answers_.end() ? answer->second(dialog, wParam, lParam) : FALSE;
  }

 private:
  static inline ScriptedDialog* current_ = nullptr;
  HiddenWindow keepsDesktop_;
  HWND window_ = nullptr;
  std::map<UINT, Answer> answers_;
  std::vector<UINT> messages_;
};

inline std::wstring TextOf(HWND window) {
  wchar_t text[100] = L"";
  ::GetWindowTextW(window, text, 100);
  return text;
}

// Dispatches every message that waits.
inline void DispatchAll() {
  MSG message;
  while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
    ::DispatchMessageW(&message);
}
