// Executes the items of the tray menu and a double click on the icon. Runs on the service main
// thread; a command that opens a dialog or sheet returns when that has been closed.
#pragma once

#include <functional>

#include "frame/help_system.h"
#include "frame/stop_request.h"
#include "session/gate_indicator.h"
#include "text/message_catalogue.h"
#include "ui/logon_control.h"
#include "ui/tray_menu.h"

namespace quillgate {

// Functions that open dialogs and sheets or stop the service; each returns when what it opened has
// been closed. An empty function stands for a component that is missing, which a message box
// reports.
struct TrayOpeners {
  std::function<void()> connection;
  std::function<void()> settings;
  std::function<void()> statistics;
  std::function<void()> about;
  // Sends the stop control to the service; shows a message box when that fails.
  std::function<void()> stopService;
};

// All of these must outlive the tray.
struct TraySurroundings {
  const MessageCatalogue& catalogue;
  Settings& settings;
  const LogonSession& logon;
  LogonControl& logonControl;
  HelpSystem& help;
  StopRequest& stop;
  TrayOpeners openers;
};

class TrayCommands {
 public:
  // The indicator shows the reminder to log off.
  TrayCommands(const TraySurroundings& surroundings, GateIndicator& indicator);

  const MessageCatalogue& Catalogue() const { return catalogue_; }
  TrayMenuState State() const;

  // Executes the command of a chosen item; a number that is not a command is ignored. A failure is
  // shown in a message box.
  void Perform(int command) noexcept;
  void PerformDoubleClick() noexcept;

 private:
  void Execute(TrayCommand command);
  void ExecuteDoubleClick();
  void LogOnWithReminder();
  void Override(std::wstring_view userName);
  // Shows the reminder once for each user.
  void RemindToLogOff();
  void Open(const std::function<void()>& opener);

  const MessageCatalogue& catalogue_;
  Settings& settings_;
  const LogonSession& logon_;
  LogonControl& logonControl_;
  HelpSystem& help_;
  TrayOpeners openers_;
  GateIndicator& indicator_;
};

}  // namespace quillgate
