// "SysDateTimePick32": a date in the user's short format, with a drop-down calendar. The time of
// day that the caller sets is kept with the date. Owned by its window, on the window thread.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <optional>

#include "platform/controls/basic_control.h"

namespace platform {

class DatePicker final : public BasicControl, private DatePickerEvents {
 public:
  explicit DatePicker(Window& window);

  std::unique_ptr<WindowPeer> MakePeer(Window& window, WindowPeer* parent) override;
  std::optional<LRESULT> Answer(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  void OnPicked(const PickedDate& date) override;
  void OnCalendarRequested() override;
  void OnCalendarClosed() override;

  DatePickerPeer* Peer() const { return static_cast<DatePickerPeer*>(Self().Peer()); }
  LRESULT SetTime(WPARAM kind, const SYSTEMTIME* time);
  LRESULT GetTime(SYSTEMTIME* time) const;
  LRESULT SetRange(WPARAM ends, const SYSTEMTIME* range);
  LRESULT GetRange(SYSTEMTIME* range) const;
  LRESULT SetCalendarStyle(DWORD style);
  void DropDown();
  void TakeDate(const PickedDate& date);

  SYSTEMTIME time_{};
  std::optional<SYSTEMTIME> earliest_;
  std::optional<SYSTEMTIME> latest_;
  DWORD calendarStyle_ = 0;
};

}  // namespace platform
