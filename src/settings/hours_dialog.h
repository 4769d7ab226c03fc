// The editor of connection hours: a week as a grid of days and hours, where a click or a drag
// switches hours between allowed and blocked. Works on a copy of the table it is given. Modal, for
// one run; made and run on the service main thread.
#pragma once

#include <cstdint>
#include <optional>

#include "accounts/user.h"
#include "frame/dialog_object.h"
#include "settings/hours_grid.h"
#include "storage/settings.h"

namespace quillgate {

class HoursDialog final : public DialogObject {
 public:
  // The days stand in the order of the week that the settings tell; Monday comes first without one.
  // The parent may be null.
  HoursDialog(const UiSurroundings& ui, Settings& settings, HWND parent, const HoursTable& hours);

  // True when it was ended with OK: the caller then takes Hours() over.
  bool Run();
  // The hours as they have been edited so far.
  const HoursTable& Hours() const { return hours_; }

 private:
  bool OnCommand(int control, int code) override;
  // The grid's notifications, which carry a cell.
  INT_PTR DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
  bool OnInitDialog(HWND window) override;
  void SetTexts(HWND window) override;

  void FillDays();
  void FillDay(int row, std::uint32_t day);
  void OnGridCommand(WORD code, LPARAM lParam);
  void OnPointerIn(GridCell cell);
  void Toggle(GridCell cell);
  // Nothing for a cell that is not one of the week's hours.
  std::optional<std::size_t> IndexOf(GridCell cell) const;

  HWND parent_;
  HoursTable hours_;
  // 0 = Sunday; what the settings hold may be any number.
  std::uint32_t firstDay_;
  HoursGrid grid_;
  GridCell lastCell_;
};

}  // namespace quillgate
