#include "platform/controls/date_picker.h"

#include <algorithm>
#include <chrono>

#include "platform/controls/control_peers.h"
#include "platform/kernel/log.h"
#include "platform/user/desktop.h"

namespace platform {
namespace {

constexpr DWORD kStyles = DTS_SHORTDATEFORMAT | DTS_SHORTDATECENTURYFORMAT | DTS_RIGHTALIGN;
constexpr DWORD kOwnStyles = 0xFFFF;  // the low word is the class's own
constexpr DWORD kFormats = DTS_SHORTDATECENTURYFORMAT;
constexpr DWORD kLongDate = 0x0004;  // DTS_LONGDATEFORMAT, a part of DTS_SHORTDATECENTURYFORMAT
constexpr DWORD kCalendarStyles = MCS_WEEKNUMBERS | MCS_NOTODAY | MCS_NOTODAYCIRCLE;
constexpr UINT kLastMessage = DTM_FIRST + 100;
// The range of the Windows calendar.
constexpr PickedDate kFirstDate = {1601, 1, 1};
constexpr PickedDate kLastDate = {9999, 12, 31};

bool IsSupported(DWORD style) {
  return (style & kOwnStyles & ~kStyles) == 0 && (style & kFormats) != kLongDate;
}

PickedDate DateOf(const SYSTEMTIME& time) {
  return {time.wYear, time.wMonth, time.wDay};
}

std::chrono::year_month_day CalendarDay(const PickedDate& date) {
  return std::chrono::year(date.year) / date.month / date.day;
}

bool IsValid(const SYSTEMTIME& time) {
  const PickedDate date = DateOf(time);
  return date >= kFirstDate && date <= kLastDate && CalendarDay(date).ok();
}

bool SetsAnEnd(WPARAM ends, WPARAM end, const SYSTEMTIME* range) {
  return (ends & end) != 0 && range != nullptr;
}

}  // namespace

DatePicker::DatePicker(Window& window) : BasicControl(window) {
  ::GetLocalTime(&time_);
}

std::unique_ptr<WindowPeer> DatePicker::MakePeer(Window& /*window*/, WindowPeer* parent) {
  auto peer = DesktopSide<ControlSide>().Controls().MakeDatePicker(Origin(parent), *this);
  peer->SetRange(kFirstDate, kLastDate);
  peer->SetDate(DateOf(time_));
  return peer;
}

std::optional<LRESULT> DatePicker::Answer(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_NCCREATE:
      if (IsSupported(Self().Style())) return std::nullopt;
      LogLine("date picker: short dates only");
      return FALSE;
    case WM_GETDLGCODE:
      return DLGC_WANTARROWS | DLGC_WANTCHARS;
    case DTM_GETSYSTEMTIME:
      return GetTime(reinterpret_cast<SYSTEMTIME*>(lParam));
    case DTM_SETSYSTEMTIME:
      return SetTime(wParam, reinterpret_cast<const SYSTEMTIME*>(lParam));
    case DTM_GETRANGE:
      return GetRange(reinterpret_cast<SYSTEMTIME*>(lParam));
    case DTM_SETRANGE:
      return SetRange(wParam, reinterpret_cast<const SYSTEMTIME*>(lParam));
    case DTM_SETMCSTYLE:
      return SetCalendarStyle(static_cast<DWORD>(lParam));
    case DTM_GETMCSTYLE:
      return calendarStyle_;
    default:
      if (message < DTM_FIRST || message > kLastMessage) return std::nullopt;
      return Refuse("date picker", message, 0);
  }
}

void DatePicker::OnPicked(const PickedDate& date) {
  TakeDate(date);
  NMDATETIMECHANGE notification{};
  notification.dwFlags = GDT_VALID;
  notification.st = time_;
  NotifyLater(DTN_DATETIMECHANGE, notification);
}

void DatePicker::OnCalendarRequested() {
  Later<DatePicker>([](DatePicker& self) { self.DropDown(); });
}

void DatePicker::OnCalendarClosed() {
  NotifyLater(DTN_CLOSEUP, NMHDR{});
}

// As documented, the calendar is shown after the notification, in which the parent may set its
// style.
void DatePicker::DropDown() {
  NMHDR notification{};
  Notify(DTN_DROPDOWN, notification);
  if (Self().IsLive() && Peer() != nullptr) Peer()->ShowCalendar();
}

LRESULT DatePicker::SetTime(WPARAM kind, const SYSTEMTIME* time) {
  if (kind != GDT_VALID || time == nullptr || !IsValid(*time)) return FALSE;
  const PickedDate date = DateOf(*time);
  if (earliest_.has_value() && date < DateOf(*earliest_)) return FALSE;
  if (latest_.has_value() && date > DateOf(*latest_)) return FALSE;
  time_ = *time;
  TakeDate(date);
  if (Peer() != nullptr) Peer()->SetDate(date);
  return TRUE;
}

LRESULT DatePicker::GetTime(SYSTEMTIME* time) const {
  if (time == nullptr) return GDT_ERROR;
  *time = time_;
  return GDT_VALID;
}

LRESULT DatePicker::SetRange(WPARAM ends, const SYSTEMTIME* range) {
  const bool hasMin = SetsAnEnd(ends, GDTR_MIN, range);
  const bool hasMax = SetsAnEnd(ends, GDTR_MAX, range);
  if ((hasMin && !IsValid(range[0])) || (hasMax && !IsValid(range[1]))) return FALSE;
  earliest_ = hasMin ? std::optional(range[0]) : std::nullopt;
  latest_ = hasMax ? std::optional(range[1]) : std::nullopt;
  const PickedDate first = hasMin ? DateOf(range[0]) : kFirstDate;
  const PickedDate last = std::max(first, hasMax ? DateOf(range[1]) : kLastDate);
  if (Peer() != nullptr) Peer()->SetRange(first, last);
  TakeDate(std::clamp(DateOf(time_), first, last));
  return TRUE;
}

LRESULT DatePicker::GetRange(SYSTEMTIME* range) const {
  if (range == nullptr) return 0;
  LRESULT ends = 0;
  range[0] = earliest_.value_or(SYSTEMTIME{});
  range[1] = latest_.value_or(SYSTEMTIME{});
  if (earliest_.has_value()) ends |= GDTR_MIN;
  if (latest_.has_value()) ends |= GDTR_MAX;
  return ends;
}

LRESULT DatePicker::SetCalendarStyle(DWORD style) {
  if ((style & ~kCalendarStyles) != 0) LogLine("date picker: a calendar style is ignored");
  const DWORD before = calendarStyle_;
  calendarStyle_ = style & kCalendarStyles;
  if (Peer() != nullptr) Peer()->SetCalendarStyle(calendarStyle_);
  return before;
}

void DatePicker::TakeDate(const PickedDate& date) {
  time_.wYear = static_cast<WORD>(date.year);
  time_.wMonth = static_cast<WORD>(date.month);
  time_.wDay = static_cast<WORD>(date.day);
  const std::chrono::weekday weekday(std::chrono::sys_days(CalendarDay(date)));
  time_.wDayOfWeek = static_cast<WORD>(weekday.c_encoding());
}

}  // namespace platform
