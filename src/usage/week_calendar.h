// Weeks: the day that they begin with and their numbers, as in ISO 8601 but with a configurable
// first day. The process has one calendar, created by service/. First days are 0 = Sunday ... 6 =
// Saturday; 7 is a Sunday taken from the locale, for which GetFirstDateOfWeek returns a date seven
// days later than for 0. Any thread.
#pragma once

#include <atomic>

namespace quillgate {

struct CalendarDay {
  int year;
  int month;  // 1 to 12
  int day;    // 1 to 31; from GetFirstDateOfWeek also 29 to 32 for the first of the next month
};

struct CalendarWeek {
  int year;
  int week;  // 1 to 53
};

class WeekCalendar {
 public:
  // Takes the first day of the week from the user's locale; Monday if it cannot be read.
  WeekCalendar();
  virtual ~WeekCalendar() = default;

  virtual int GetFirstDayOfWeek() const { return firstDay_; }
  virtual void SetFirstDayOfWeek(int day);  // other values than 0 to 6 are ignored

  // False only when `week` is null.
  virtual bool GetWeekOfDate(const CalendarDay& date, CalendarWeek* week) const;

  // False when `first` is null, for a year before 1900, or for a week that the year does not have.
  virtual bool GetFirstDateOfWeek(const CalendarWeek& week, CalendarDay* first) const;

 private:
  std::atomic<int> firstDay_;
};

}  // namespace quillgate
