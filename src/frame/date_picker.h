// A field for a date, with a calendar that drops down. It notifies its dialog by DTN_DATETIMECHANGE
// and, before the calendar drops down, by DTN_DROPDOWN. Only year, month and day count.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <optional>

#include "frame/control.h"

namespace quillgate {

class DatePicker : public Control {
 public:
  using Control::Control;

  // Notifies nobody.
  void SetDate(const SYSTEMTIME& date) const;
  // Nothing when the field has none.
  std::optional<SYSTEMTIME> Date() const;

  // The first and the last date that can be chosen; each replaces both bounds, nothing: no bound.
  void SetBounds(const std::optional<SYSTEMTIME>& earliest,
                 const std::optional<SYSTEMTIME>& latest) const;

  // For calendars that drop down from now on: week numbers, and neither a mark nor a line for
  // today.
  void ShowWeekNumbersOnly() const {
    Send(DTM_SETMCSTYLE, 0, MCS_WEEKNUMBERS | MCS_NOTODAY | MCS_NOTODAYCIRCLE);
  }
};

}  // namespace quillgate
