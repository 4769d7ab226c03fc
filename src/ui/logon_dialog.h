// The logon dialog: user name and password; under the NONE system the override password alone.
// Created and run on the service main thread.
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
  // Set when the first banner of the process is painted. Only that banner is repainted by a timer.
  bool& bannerTimerUsed;
  // Continues from one dialog to the next.
  PasswordPause& passwordPause;
};

class LogonDialog final : public DialogObject {
 public:
  LogonDialog(const LogonDialogSurroundings& surroundings, LogonSystem system,
              const LogonCandidates& candidates);

  // Shows the dialog and returns when it has been closed. True when a user was accepted; the name
  // is then stored as that of the last logon. A pause follows each wrong password; the third one
  // closes the dialog like Cancel. The parent may be null.
  bool Run(HWND parent);

  // The name of the user who was accepted.
  const std::wstring& UserName() const { return userName_; }

 private:
  bool OnCommand(int control, int code) override;
  INT_PTR DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
  bool OnInitDialog(HWND window) override;
  void SetTexts(HWND window) override;

  void OnTimer(HWND window, UINT_PTR timer) const;
  void OnOk(HWND window);
  void OnWrongPassword(HWND window);
  // Enables the password field and OK, or disables them until the pause is over.
  void AdmitPassword(HWND window) const;
  void OnPaint(HWND window);
  void Close(HWND window, int result);

  DWORD PauseLeft() const { return pause_.Left(::GetTickCount()); }
  bool IsOverride() const { return system_ == LogonSystem::kNone; }
  void PositionPasswordRow(HWND window) const;
  // Lists the users and selects the user of the last logon, else the first. Returns whether the
  // user of the last logon is in the list.
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
