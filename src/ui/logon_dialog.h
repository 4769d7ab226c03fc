// Asks who logs on, with the password; under the NONE system for the override password alone. Made
// and run on the service main thread.
#pragma once

#include <string>

#include "accounts/logon_session.h"
#include "frame/dialog_object.h"
#include "storage/settings.h"
#include "ui/logon_banner.h"
#include "ui/password_pause.h"

namespace quillgate {

struct LogonDialogSurroundings {
  const UiSurroundings& ui;
  Settings& settings;
  const GdiPlus& gdiPlus;
  // Set by the first banner that was painted in the process, the only one that is repainted by a
  // timer.
  bool& bannerTimerUsed;
  // Goes on from one dialog to the next.
  PasswordPause& passwordPause;
};

class LogonDialog final : public DialogObject {
 public:
  LogonDialog(const LogonDialogSurroundings& surroundings, LogonSystem system,
              const LogonCandidates& candidates);

  // Returns when the dialog has been closed. Whether a user was accepted, who is remembered as the
  // last one; the third wrong password closes it like Cancel, and after each one there is a pause.
  // The parent may be null.
  bool Run(HWND parent);

  // Who was accepted.
  const std::wstring& UserName() const { return userName_; }

 private:
  bool OnCommand(int control, int code) override;
  INT_PTR DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
  bool OnInitDialog(HWND window) override;
  void SetTexts(HWND window) override;

  void OnTimer(HWND window, UINT_PTR timer) const;
  void OnOk(HWND window);
  void OnWrongPassword(HWND window);
  // Lets a password be entered, or keeps it from being entered as long as the pause lasts.
  void AdmitPassword(HWND window) const;
  void OnPaint(HWND window);
  void Close(HWND window, int result);

  DWORD PauseLeft() const { return pause_.Left(::GetTickCount()); }
  bool IsOverride() const { return system_ == LogonSystem::kNone; }
  void PositionPasswordRow(HWND window) const;
  // Whether the user of the last logon is among them, who is then the one chosen.
  bool ListUsers(HWND window) const;
  std::wstring ChosenName(HWND window) const;

  Settings& settings_;
  LogonSystem system_;
  const LogonCandidates& candidates_;
  bool& bannerTimerUsed_;
  PasswordPause& pause_;
  LogonBanner banner_;
  int attemptsLeft_ = 3;
  std::wstring userName_;
};

}  // namespace quillgate
