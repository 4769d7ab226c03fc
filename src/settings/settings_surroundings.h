// What the settings sheet and its pages work with. All of it outlives the sheet.
#pragma once

#include <functional>
#include <memory>

#include "accounts/logon_session.h"
#include "frame/ui_surroundings.h"
#include "session/session_log.h"
#include "usage/week_calendar.h"

namespace quillgate {

// The logon system that is in force, and the change to another one. Implemented by service/.
class LogonSystemControl {
 public:
  virtual ~LogonSystemControl() = default;

  // The users of the logon system in force; null before they have been loaded.
  virtual std::shared_ptr<UserCollection> Users() const = 0;

  // Changes to the system that `store` writes to the settings: ends the session, loads the other
  // users and logs on as far as nobody has to be asked. False when `store` returns false; nothing
  // has changed then.
  virtual bool Switch(const std::function<bool()>& store) = 0;
};

struct SettingsSurroundings {
  const UiSurroundings& ui;
  MessageCatalogue& catalogue;
  Database& database;
  Settings& settings;
  WeekCalendar& calendar;
  LogonSession& logon;
  WindowsIdentity& identity;
  LogonSystemControl& logonSystem;
};

}  // namespace quillgate
