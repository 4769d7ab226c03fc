// The icon of the program in the notification area: shows the state of the gate, and opens the
// menu. The process has one, created by service/ on the service main thread and destroyed there.
// The functions of GateIndicator may be called on any thread.
#pragma once

#include <atomic>
#include <map>
#include <vector>

#include "session/gate_indicator.h"
#include "ui/tray_commands.h"
#include "ui/tray_icon.h"
#include "ui/tray_menu.h"

namespace quillgate {

class OwnerDrawMenu;

class TrayController final : public TrayIcon, public GateIndicator {
 public:
  // All of these must outlive the controller. Throws std::runtime_error when the window cannot be
  // created.
  explicit TrayController(const TraySurroundings& surroundings);

  void SetIcon(GateIcon icon) override;
  void SetTip(const std::wstring& text) override;
  void Show() override;
  void ShowMessage(const std::wstring& text, const std::wstring& title, BalloonIcon icon,
                   int kind) override;

  // The busy flag: while it is set, clicks on the icon are ignored. One flag, not a count.
  bool Lock() override;
  void Unlock() override;

  // The kind of the last balloon.
  int LastMessageKind() const { return lastKind_; }

 private:
  void OnButtonUp(MouseButton button) override;
  void OnDoubleClick() override;

  // Shows the menu for the current state at the cursor. Returns the number of the chosen command, 0
  // when none was chosen, -1 when the cursor position cannot be determined.
  int BuildAndTrackMenu();
  void Fill(OwnerDrawMenu& popup, const std::vector<TrayMenuItem>& items) const;

  TrayCommands commands_;
  StopRequest& stop_;
  std::map<WORD, IconHandle> menuIcons_;  // by the numbers of their resources
  std::atomic<bool> busy_ = false;
  std::atomic<int> lastKind_ = 0;
};

}  // namespace quillgate
