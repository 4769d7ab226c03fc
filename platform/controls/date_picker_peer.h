// The widget of a date picker, in the user's short format. For the window thread.
#pragma once

#include <windows.h>

#include "platform/user/window_peer.h"

namespace platform {

struct PickedDate {
  int year = 0;
  int month = 0;  // 1 to 12
  int day = 0;    // 1 to 31

  auto operator<=>(const PickedDate&) const = default;
};

// Called inside an event of the desktop.
class DatePickerEvents {
 public:
  virtual ~DatePickerEvents() = default;

  // The user picked a date: in the calendar, by stepping, or by typing a part of it that is now
  // complete or left. Not called for SetDate and SetRange.
  virtual void OnPicked(const PickedDate& date) = 0;
  // The user asked for the calendar, which only ShowCalendar shows.
  virtual void OnCalendarRequested() = 0;
  virtual void OnCalendarClosed() = 0;
};

class DatePickerPeer : public WindowPeer {
 public:
  virtual void SetDate(const PickedDate& date) = 0;
  // The dates that the user can pick. A shown date outside them is replaced by the nearest one.
  virtual void SetRange(const PickedDate& first, const PickedDate& last) = 0;
  // MCS_ bits.
  virtual void SetCalendarStyle(DWORD style) = 0;
  virtual void ShowCalendar() = 0;
};

}  // namespace platform
