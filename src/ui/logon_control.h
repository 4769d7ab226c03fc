// What the tray asks for when a user wants to log on or off. Implemented by service/, which keeps
// such requests apart from those of the system and logs what fails in them.
#pragma once

#include <string_view>

namespace quillgate {

class LogonControl {
 public:
  virtual ~LogonControl() = default;

  // An empty name is an ordinary logon; "Admin" and "User" are the override commands of the NONE
  // system. May show the logon dialogs and wait for a person. Whether a user is logged on
  // afterwards.
  virtual bool LogOnFromTray(std::wstring_view name) = 0;
  virtual void LogOffFromTray() = 0;
};

}  // namespace quillgate
