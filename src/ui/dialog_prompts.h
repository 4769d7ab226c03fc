// Shows the prompts of a logon as dialogs; the tray ignores clicks while one is open. The process
// has one, created by service/. Used on the service main thread.
#pragma once

#include "accounts/logon_session.h"
#include "frame/gdi_plus.h"
#include "frame/ui_surroundings.h"
#include "session/gate_indicator.h"
#include "ui/password_pause.h"

namespace quillgate {

class DialogPrompts final : public LogonPrompts {
 public:
  // All of these must outlive the object.
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
