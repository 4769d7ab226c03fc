// The sheet "Statistics": the finished sessions of any interval, and the top lists. Modal; created
// and opened on the service main thread. Whoever opens it has seen that the user may see it.
#pragma once

#include <string>
#include <vector>

#include "frame/ui_surroundings.h"
#include "storage/database.h"
#include "usage/week_calendar.h"

namespace quillgate {

// All of these must outlive the sheet.
struct StatisticsSurroundings {
  const UiSurroundings& ui;
  Database& database;
  const WeekCalendar& calendar;
};

class StatisticsSheet {
 public:
  explicit StatisticsSheet(const StatisticsSurroundings& surroundings)
      : surroundings_(surroundings) {}

  // Shows the sheet and returns when it has been closed. `users` are the names that the user filter
  // offers, in the order of the list.
  void Open(const std::vector<std::wstring>& users);

 private:
  StatisticsSurroundings surroundings_;
};

}  // namespace quillgate
