// What the benchmarks of sheets share: a program with a session on a desktop without a screen, and
// the timer procedures of a user who looks at a sheet and closes it.
#pragma once

#include <windows.h>

#include <prsht.h>

#include <optional>

#include "frame/help_system.h"
#include "frame/ui_surroundings.h"
#include "platform/kit/hidden_window.h"
#include "program/with_session.h"
#include "timing.h"

namespace quillgate {

class DesktopMachine : public MachineTest {
 protected:
  DesktopMachine() {
    machine_.UseDesktop();
    keepAlive_.emplace();
  }

 private:
  std::optional<HiddenWindow> keepAlive_;  // keeps the desktop open between sheets
};

class SheetOffice : public WithSession<WithUsers<DesktopMachine>> {
 protected:
  // Milliseconds until `open`, which opens a sheet, has returned. The timer procedure is called
  // until it kills its timer, and presses a button in the end.
  template <class Open>
  double OpenFor(TIMERPROC user, const Open& open) {
    constexpr UINT kTimerMilliseconds = 10;
    ::SetTimer(nullptr, 0, kTimerMilliseconds, user);
    Pass(std::chrono::milliseconds(kTimerMilliseconds));
    return bench::SecondsOf(open) * 1000;
  }

  HelpSystem help_;
  StopRequest stop_;
  UiSurroundings ui_{catalogue_, help_, stop_};

 private:
  void TestBody() override {}
};

// The sheet, for which the timer has fired for the last time; null while none is active.
inline HWND AwaitedSheet(UINT_PTR timer) {
  const HWND sheet = ::GetActiveWindow();
  if (sheet != nullptr) ::KillTimer(nullptr, timer);
  return sheet;
}

// Presses Cancel, which the connection sheet calls Close.
inline void CALLBACK CloseSheet(HWND, UINT, UINT_PTR timer, DWORD) noexcept {
  if (const HWND sheet = AwaitedSheet(timer)) PropSheet_PressButton(sheet, PSBTN_CANCEL);
}

}  // namespace quillgate
