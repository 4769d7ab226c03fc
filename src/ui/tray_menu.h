// The items of the tray menu: a pure function of the current user and the settings.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "accounts/logon_session.h"
#include "text/message_ids.h"

namespace quillgate {

enum class TrayCommand : WORD {
  kNone = 0,
  kExit = 1,
  kHelp = 2,  // opens the submenu
  kSettings = 4,
  kStatistics = 5,
  kLogOff = 6,
  kLogOn = 7,
  kAbout = 11,
  kHelpTopics = 12,
  kConnection = 13,
  kOverride = 14,
  kRemoveOverride = 15,
};

struct TrayMenuState {
  LogonSystem logonSystem = LogonSystem::kNone;
  bool isLoggedOn = false;
  // Empty and false while no user is logged on.
  std::wstring userName;
  bool isAdministrator = false;
  bool statisticsForAdministrators = false;

  bool MaySeeStatistics() const { return !statisticsForAdministrators || isAdministrator; }
};

TrayMenuState CurrentTrayMenuState(Settings& settings, const LogonSession& logon);

struct TrayMenuItem {
  MessageId text = 0;  // 0: a separator
  TrayCommand command = TrayCommand::kNone;
  WORD icon = 0;  // the number of its resource; 0: none
  std::vector<TrayMenuItem> submenu;

  bool operator==(const TrayMenuItem&) const = default;
};

struct TrayMenu {
  std::vector<TrayMenuItem> items;  // from top to bottom
  // Drawn bold. May be an item that the menu does not have; then none is bold. Deliberate, see
  // docs/behaviour.md.
  TrayCommand defaultCommand = TrayCommand::kNone;
};

TrayMenu BuildTrayMenu(const TrayMenuState& state);

}  // namespace quillgate
