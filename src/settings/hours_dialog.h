// The editor of connection hours: a week as a grid of days and hours, where a click or a drag
// switches hours between allowed and blocked. Works on a copy of the table that the caller passes.
// Modal, for one run; created and run on the service main thread.
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
  // The rows begin with the first day of the week from the settings, which is Monday by default.
  // The parent may be null.
  HoursDialog(const UiSurroundings& ui, Settings& settings, HWND parent, const HoursTable& hours);

  // Shows the dialog. True when it was closed with OK: the caller then takes over Hours().
  bool Run();
  // The hours as edited so far.
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
  void OnMouseMove(GridCell cell);
  void Toggle(GridCell cell);
  // Nullopt for a cell that is not an hour of the week.
  std::optional<std::size_t> IndexOf(GridCell cell) const;

  HWND parent_;
  HoursTable hours_;
  // 0 is Sunday. The settings may contain any number.
  std::uint32_t firstDay_;
  HoursGrid grid_;
  GridCell lastCell_;
};

}  // namespace quillgate
