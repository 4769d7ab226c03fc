// Weeks: which day they begin with and how they are numbered, in the manner of ISO 8601 with a
// first day of choice. The process has one calendar, made by service/. First days count 0 = Sunday
// ... 6 = Saturday; 7 is a Sunday taken from the locale, and GetFirstDateOfWeek then answers seven
// days later than with 0. Any thread.
#pragma once

#include <atomic>

namespace quillgate {

struct CalendarDay {
  int year;
  int month;  // 1 to 12
  int day;    // 1 to 31; GetFirstDateOfWeek may name the first of a month as day 29 to 32 before it
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
  virtual void SetFirstDayOfWeek(int day);  // ignores all but 0 to 6

  // False only for a missing output.
  virtual bool GetWeekOfDate(const CalendarDay& date, CalendarWeek* week) const;

  // False for a missing output, a year before 1900, or a week that the year does not have.
  virtual bool GetFirstDateOfWeek(const CalendarWeek& week, CalendarDay* first) const;

 private:
  std::atomic<int> firstDay_;
};

}  // namespace quillgate
