#include "settings/hours_dialog.h"

#include <algorithm>

#include "frame/control.h"
#include "frame/help_topics.h"
#include "resources/resource.h"

namespace quillgate {
namespace {

constexpr std::uint32_t kDays = 7;
constexpr int kHours = 24;

std::size_t HourIndex(std::uint32_t day, int hour) {
  return std::size_t{day} * kHours + static_cast<std::size_t>(hour);
}

bool IsPrimaryButtonDown() {
  const int button = ::GetSystemMetrics(SM_SWAPBUTTON) != 0 ? VK_RBUTTON : VK_LBUTTON;
  return ::GetAsyncKeyState(button) < 0;
}

}  // namespace

HoursDialog::HoursDialog(const UiSurroundings& ui, Settings& settings, HWND parent,
                         const HoursTable& hours)
    : DialogObject(ui, kTopicHours),
      parent_(parent),
      hours_(hours),
      firstDay_(SettingNumber(settings.GetSetting(SettingKey::kFirstDayOfWeek, L"1"))) {}

bool HoursDialog::Run() {
  return RunModal(IDD_HOURS, parent_) == IDOK;
}

bool HoursDialog::OnInitDialog(HWND window) {
  grid_.Create(window);
  return true;
}

void HoursDialog::SetTexts(HWND) {
  constexpr ControlText kTexts[] = {
      {IDC_HOURS_EXPLANATION, kMsgClickHours}, {IDOK, kMsgOk}, {IDCANCEL, kMsgCancel}};
  ShowCaption(kMsgConnectionHours);
  ShowTexts(kTexts);
  FillDays();
  grid_.Refresh();
}

// Fills the rows from the first day of the week to Saturday, then from Sunday on.
void HoursDialog::FillDays() {
  int row = 1;
  for (std::uint32_t day = firstDay_; day < kDays; ++day)
    FillDay(row++, day);
  for (std::uint32_t day = 0; day < std::min(firstDay_, kDays); ++day)
    FillDay(row++, day);
}

void HoursDialog::FillDay(int row, std::uint32_t day) {
  grid_.SetDayName(row, Catalogue().GetMessageText(kMsgSunday + day));
  for (int hour = 0; hour < kHours; ++hour)
    grid_.ShowHour({row, hour + 1}, hours_[HourIndex(day, hour)]);
}

bool HoursDialog::OnCommand(int control, int) {
  return EndBy(control);
}

INT_PTR HoursDialog::DialogProc(HWND, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != WM_COMMAND || LOWORD(wParam) != kHoursGridId) return FALSE;
  OnGridCommand(HIWORD(wParam), lParam);
  return TRUE;
}

void HoursDialog::OnGridCommand(WORD code, LPARAM lParam) {
  switch (code) {
    case GCN_CLICK:
      Toggle({LOWORD(lParam), HIWORD(lParam)});
      break;
    case GCN_MOUSEMOVE:
      OnMouseMove(*reinterpret_cast<const GridCell*>(lParam));
      break;
    default:
      break;
  }
}

// A drag toggles each cell that the mouse enters. It had already entered the cell in which the
// button went down, so only the click toggles that cell.
void HoursDialog::OnMouseMove(GridCell cell) {
  if (cell == lastCell_) return;
  lastCell_ = cell;
  if (cell.row < 1 || cell.col < 1 || !IsPrimaryButtonDown()) return;
  Toggle(cell);
  grid_.Refresh();
}

void HoursDialog::Toggle(GridCell cell) {
  const auto index = IndexOf(cell);
  if (!index) return;
  hours_[*index] = !hours_[*index];
  grid_.ShowHour(cell, hours_[*index]);
}

std::optional<std::size_t> HoursDialog::IndexOf(GridCell cell) const {
  std::int64_t day = std::int64_t{cell.row} - 1 + firstDay_;
  if (day >= kDays) day -= kDays;
  const int hour = cell.col - 1;
  if (day < 0 || day >= kDays || hour < 0 || hour >= kHours) return {};
  return HourIndex(static_cast<std::uint32_t>(day), hour);
}

}  // namespace quillgate
