// A date and time picker control with a calendar that drops down. It notifies its dialog with
// DTN_DATETIMECHANGE and, before the calendar drops down, with DTN_DROPDOWN. Only year, month and
// day are used.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <optional>

#include "frame/control.h"

namespace quillgate {

class DatePicker : public Control {
 public:
  using Control::Control;

  // Sends no notification.
  void SetDate(const SYSTEMTIME& date) const;
  // Nullopt when the control has no date.
  std::optional<SYSTEMTIME> Date() const;

  // Sets the first and the last date that can be chosen. Every call replaces both; nullopt is no
  // bound.
  void SetBounds(const std::optional<SYSTEMTIME>& earliest,
                 const std::optional<SYSTEMTIME>& latest) const;

  // Style of the calendar when it drops down from now on: with week numbers, without a mark for
  // today and without the line that shows it.
  void ShowWeekNumbersOnly() const {
    Send(DTM_SETMCSTYLE, 0, MCS_WEEKNUMBERS | MCS_NOTODAY | MCS_NOTODAYCIRCLE);
  }
};

}  // namespace quillgate
