// The statistics sheet's page of finished sessions: those of the checked users in a week, a month
// or days of the user's choice, with their totals. What it shows was read when the interval or the
// filter last changed. Owned by the sheet, used on the service main thread.
#pragma once

#include <string>
#include <vector>

#include "frame/property_page.h"
#include "stats/date_interval.h"
#include "stats/session_list.h"
#include "stats/session_query.h"
#include "stats/statistics_sheet.h"

namespace quillgate {

class DetailsPage final : public PropertyPage {
 public:
  DetailsPage(const StatisticsSurroundings& surroundings, const std::vector<std::wstring>& users);

 private:
  bool OnInitDialog(HWND window) override;
  void SetTexts(HWND window) override;
  bool OnCommand(int control, int code) override;
  bool OnNotify(const NMHDR& header) override;
  // WM_CONTEXTMENU.
  INT_PTR DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;

  void AddColumns() const;
  void ListUsers() const;
  UserFilter CheckedUsers() const;

  IntervalKind ChosenKind() const;
  void OnKindChosen();
  void StepInterval(bool forwards);
  void OnDatePicked(int picker);
  void ShowInterval() const;
  // So that no date can be picked with which the interval would end before it begins.
  void BoundPickers() const;

  // Reads the sessions again. May throw DBerror; nothing is listed then.
  void Refresh();
  void ShowTotals() const;
  void SortBy(SessionColumn column);

  bool OnPickerNotify(const NMHDR& header);
  bool OnSessionsNotify(const NMHDR& header);
  void OnKey(WORD key);
  void ShowSessionsMenu(POINT position) const;
  // In the order shown, a line for each, cells separated by tabs.
  std::wstring SelectedText() const;
  void CopySelected() const;

  const StatisticsSurroundings& surroundings_;
  const std::vector<std::wstring>& users_;
  DateInterval interval_;
  SessionList sessions_;
  SessionColumn sortColumn_ = SessionColumn::kDate;
  bool isDescending_ = false;
  bool isFilled_ = false;
};

}  // namespace quillgate
