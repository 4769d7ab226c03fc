// The sheet "Connection information": the running session live, and the measured adapter. Modal;
// created and opened on the service main thread. Closes by itself when no user is logged on.
#pragma once

#include "frame/ui_surroundings.h"
#include "session/session_log.h"
#include "ui/rate_history.h"

namespace quillgate {

// All of these must outlive the sheet.
struct ConnectionSurroundings {
  const UiSurroundings& ui;
  Settings& settings;
  Database& database;
  const WeekCalendar& calendar;
  const LogonSession& logon;
};

class ConnectionSheet {
 public:
  explicit ConnectionSheet(const ConnectionSurroundings& surroundings)
      : surroundings_(surroundings) {}

  // Shows the sheet and returns when it has been closed. May throw DBerror.
  void Open(const SessionLog& session);

 private:
  ConnectionSurroundings surroundings_;
  // Kept while the sheet is closed.
  RateHistory rates_;
};

}  // namespace quillgate
