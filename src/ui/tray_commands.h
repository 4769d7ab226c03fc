// What the items of the tray's menu and a double click on the icon do. Runs on the service main
// thread; a command that opens a dialog or sheet returns when it has been closed.
#pragma once

#include <functional>

#include "frame/help_system.h"
#include "frame/stop_request.h"
#include "session/gate_indicator.h"
#include "text/message_catalogue.h"
#include "ui/logon_control.h"
#include "ui/tray_menu.h"

namespace quillgate {

// What is opened elsewhere; each runs until what it opened is closed. An empty one is a part that
// is missing, and the user is told so.
struct TrayOpeners {
  std::function<void()> connection;
  std::function<void()> settings;
  std::function<void()> statistics;
  std::function<void()> about;
  // Sends the service the stop control; tells the user when it cannot.
  std::function<void()> stopService;
};

// All of it outlives the tray.
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

  // Carries out a chosen item; any number that is no command does nothing. A failure is shown in a
  // message box.
  void Perform(int command) noexcept;
  void PerformDoubleClick() noexcept;

 private:
  void Carry(TrayCommand command);
  void CarryDoubleClick();
  void LogOnWithReminder();
  void Override(std::wstring_view userName);
  // Once for each user.
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
