// The questions of a logon as dialogs on the screen, during which the tray ignores clicks. The
// process has one, made by service/; the questions are asked on the service main thread.
#pragma once

#include "accounts/logon_session.h"
#include "frame/gdi_plus.h"
#include "frame/ui_surroundings.h"
#include "session/gate_indicator.h"
#include "ui/password_pause.h"

namespace quillgate {

class DialogPrompts final : public LogonPrompts {
 public:
  // All of it outlives the object.
  DialogPrompts(const UiSurroundings& ui, Settings& settings, const GdiPlus& gdiPlus,
                GateIndicator& indicator);

  std::optional<std::wstring> AskLogon(LogonSystem system,
                                       const LogonCandidates& candidates) override;
  std::optional<std::wstring> AskFirstUserName() override;
  void NotifyFirstUserMade() override;

 private:
  UiSurroundings ui_;
  Settings& settings_;
  const GdiPlus& gdiPlus_;
  GateIndicator& indicator_;
  // Never reset: see LogonDialogSurroundings.
  bool bannerTimerUsed_ = false;
  PasswordPause passwordPause_;
};

}  // namespace quillgate
