// Turns who is on the seat's screen into logons and logoffs of the packages. Every change is
// recorded before and after the packages are told, so that none is lost when the process is killed
// between; one may then be told twice. Main thread.
#pragma once

#include <functional>
#include <string>

#include "platform/account/seat_state.h"
#include "platform/tools/winlogon/console_record.h"
#include "platform/tools/winlogon/notify_packages.h"

namespace platform::winlogon {

class LogonKeeper {
 public:
  using Notify = std::function<void(LogonEvent event, const std::wstring& user)>;

  LogonKeeper(std::wstring bootId, Notify notify);

  // Tells of the startup, once in each run of the machine.
  void Start();

  // Tells of what has changed since the last state, or since the last one before the process was
  // started: the logoff of who has left the screen, the logon of who has come.
  void Follow(const SeatState& seat);

 private:
  void Store(ConsoleUser user);

  const ConsoleRecord record_;
  const Notify notify_;
  ConsoleUser current_;
};

}  // namespace platform::winlogon
