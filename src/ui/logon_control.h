// Logons and log-offs that a user requests from the tray. Implemented by service/, which keeps them
// apart from the requests of the system and logs their failures.
#pragma once

#include <string_view>

namespace quillgate {

class LogonControl {
 public:
  virtual ~LogonControl() = default;

  // An empty name is an ordinary logon; "Admin" and "User" are the override commands of the NONE
  // system. May show the logon dialogs and wait for the user. Returns whether a user is logged on
  // afterwards.
  virtual bool LogOnFromTray(std::wstring_view name) = 0;
  virtual void LogOffFromTray() = 0;
};

}  // namespace quillgate
