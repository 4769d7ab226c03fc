#include "stats/details_page.h"

#include <algorithm>
#include <array>
#include <numeric>

#include "frame/clipboard.h"
#include "frame/date_picker.h"
#include "frame/help_topics.h"
#include "frame/list_view.h"
#include "frame/popup_menu.h"
#include "frame/radio_group.h"
#include "frame/up_down.h"
#include "resources/resource.h"
#include "text/locale_format.h"

namespace quillgate {
namespace {

constexpr int kKindButtons[] = {IDC_INTERVAL_WEEK, IDC_INTERVAL_MONTH, IDC_INTERVAL_CUSTOM};
constexpr std::uint64_t kBytesPerMegabyte = 1'048'576;

// The width in pixels with the standard dialog font, 0 for a share of what is left; the unit of
// dialog coordinates scales it to another font.
struct Column {
  MessageId heading;
  int width;
  int alignment;
};
constexpr Column kColumns[kSessionColumnCount] = {
    {kMsgDateColumn, 97, LVCFMT_LEFT},    {kMsgUserColumn, 107, LVCFMT_LEFT},
    {kMsgTimeColumn, 67, LVCFMT_LEFT},    {kMsgDownloadsColumn, 0, LVCFMT_RIGHT},
    {kMsgUploadsColumn, 0, LVCFMT_RIGHT},
};
constexpr int kSharingColumns = 2;

enum SessionsCommand { kCopy = 1, kSelectAll = 2 };

// The width of a date and a time of two digits in each of their parts.
int DateWidth(const ListView& list) {
  constexpr SYSTEMTIME kWide{2000, 12, 0, 28, 22, 48, 0, 0};
  constexpr int kPadding = 12;
  return list.TextWidth(FormatDate(kWide) + L" " + FormatTime(kWide)) + kPadding;
}

// The widths of all columns within a list, in pixels.
std::array<int, kSessionColumnCount> WidthsIn(HWND dialog, const ListView& list) {
  constexpr int kStandardUnit = 6;  // pixels in four horizontal dialog units
  RECT unit{0, 0, 4, 8};
  ::MapDialogRect(dialog, &unit);
  RECT area{};
  ::GetClientRect(list.Window(), &area);
  std::array<int, kSessionColumnCount> widths{};
  for (int i = 0; i < kSessionColumnCount; ++i)
    widths[i] = kColumns[i].width * unit.right / kStandardUnit;
  widths[0] = std::max(widths[0], DateWidth(list));
  const int given = std::accumulate(widths.begin(), widths.end(), 0);
  const int left = area.right - ::GetSystemMetrics(SM_CXVSCROLL) - given;
  for (int i = 0; i < kSessionColumnCount; ++i)
    if (widths[i] == 0) widths[i] = left / kSharingColumns;
  return widths;
}

// Replaces each "%s" of the format by the next text.
std::wstring Insert(std::wstring format, std::initializer_list<std::wstring> texts) {
  constexpr std::wstring_view kPlace = L"%s";
  std::size_t position = 0;
  for (const std::wstring& text : texts) {
    position = format.find(kPlace, position);
    if (position == std::wstring::npos) break;
    format.replace(position, kPlace.size(), text);
    position += text.size();
  }
  return format;
}

bool IsControlDown() {
  return ::GetKeyState(VK_CONTROL) < 0;
}

}  // namespace

DetailsPage::DetailsPage(const StatisticsSurroundings& surroundings,
                         const std::vector<std::wstring>& users)
    : PropertyPage(surroundings.ui, IDD_STATISTICS_DETAILS, kMsgDetails, kTopicStatisticsDetails),
      surroundings_(surroundings),
      users_(users) {}

bool DetailsPage::OnInitDialog(HWND window) {
  Control(::GetParent(window), IDOK).Show(false);
  AddColumns();
  ListUsers();
  // Steps are notified in both directions, since they are refused: the position stays in the
  // middle.
  const UpDown step(window, IDC_INTERVAL_STEP);
  step.SetRange(-1, 1);
  step.SetPosition(0);
  SYSTEMTIME now{};
  ::GetLocalTime(&now);
  interval_ = WeekOf(DayOf(now), surroundings_.calendar.GetFirstDayOfWeek());
  RadioGroup(window, kKindButtons).Select(IDC_INTERVAL_WEEK);
  isFilled_ = true;
  OnKindChosen();
  return true;
}

void DetailsPage::AddColumns() const {
  const ListView list(Window(), IDC_SESSIONS);
  list.SelectWholeRows();
  const auto widths = WidthsIn(Window(), list);
  for (int i = 0; i < kSessionColumnCount; ++i)
    list.AddColumn({}, widths[i], kColumns[i].alignment);
}

void DetailsPage::ListUsers() const {
  const ListView list(Window(), IDC_USER_FILTER);
  list.AddCheckBoxes();
  list.AddColumn({}, 0);
  for (const std::wstring& name : users_)
    list.Check(list.AddRow(name), true);
  list.FitColumn(0);
}

void DetailsPage::SetTexts(HWND window) {
  constexpr ControlText kTexts[] = {
      {IDC_USER_FILTER_GROUP, kMsgUserFilter}, {IDC_INTERVAL_GROUP, kMsgDateInterval},
      {IDC_INTERVAL_WEEK, kMsgWeek},           {IDC_INTERVAL_MONTH, kMsgMonth},
      {IDC_INTERVAL_CUSTOM, kMsgCustom},       {IDC_INTERVAL_TO_LABEL, kMsgTo},
  };
  Control(::GetParent(window), IDCANCEL).SetText(Catalogue().GetMessageText(kMsgClose));
  ShowTexts(kTexts);
  const ListView list(window, IDC_SESSIONS);
  for (int i = 0; i < kSessionColumnCount; ++i)
    list.SetHeading(i, Catalogue().GetMessageText(kColumns[i].heading));
  ShowTotals();
}

bool DetailsPage::OnCommand(int control, int code) {
  const bool isKind = std::ranges::find(kKindButtons, control) != std::end(kKindButtons);
  if (!isFilled_ || !isKind || code != BN_CLICKED) return false;
  OnKindChosen();
  return true;
}

bool DetailsPage::OnNotify(const NMHDR& header) {
  if (!isFilled_) return false;
  switch (header.idFrom) {
    case IDC_SESSIONS:
      return OnSessionsNotify(header);
    case IDC_USER_FILTER:
      if (!ListView::IsCheckChange(header)) return false;
      Refresh();
      return true;
    case IDC_INTERVAL_FROM:
    case IDC_INTERVAL_TO:
      return OnPickerNotify(header);
    case IDC_INTERVAL_STEP:
      if (header.code != UDN_DELTAPOS) return false;
      // The control itself keeps its position.
      SetResult(TRUE);
      StepInterval(reinterpret_cast<const NMUPDOWN&>(header).iDelta > 0);
      return true;
    default:
      return false;
  }
}

bool DetailsPage::OnPickerNotify(const NMHDR& header) {
  const int picker = static_cast<int>(header.idFrom);
  switch (header.code) {
    case DTN_DATETIMECHANGE:
      OnDatePicked(picker);
      return true;
    case DTN_DROPDOWN:
      DatePicker(Window(), picker).ShowWeekNumbersOnly();
      return true;
    default:
      return false;
  }
}

bool DetailsPage::OnSessionsNotify(const NMHDR& header) {
  switch (header.code) {
    case LVN_GETDISPINFOW:
      ListView::AnswerTextRequest(header, [this](int row, int column) {
        return sessions_.Text(static_cast<std::size_t>(row), static_cast<SessionColumn>(column));
      });
      return true;
    case LVN_COLUMNCLICK:
      SortBy(static_cast<SessionColumn>(reinterpret_cast<const NMLISTVIEW&>(header).iSubItem));
      return true;
    case LVN_KEYDOWN:
      OnKey(reinterpret_cast<const NMLVKEYDOWN&>(header).wVKey);
      return true;
    default:
      return false;
  }
}

INT_PTR DetailsPage::DialogProc(HWND, UINT message, WPARAM wParam, LPARAM lParam) {
  const ListView list(Window(), IDC_SESSIONS);
  if (message != WM_CONTEXTMENU || reinterpret_cast<HWND>(wParam) != list.Window()) return FALSE;
  ShowSessionsMenu(list.MenuPosition(lParam));
  return TRUE;
}

UserFilter DetailsPage::CheckedUsers() const {
  const ListView list(Window(), IDC_USER_FILTER);
  UserFilter filter;
  for (std::size_t i = 0; i < users_.size(); ++i)
    if (list.IsChecked(static_cast<int>(i))) filter.names.push_back(users_[i]);
  filter.isEveryone = filter.names.size() == users_.size();
  return filter;
}

IntervalKind DetailsPage::ChosenKind() const {
  switch (RadioGroup(Window(), kKindButtons).Selection()) {
    case IDC_INTERVAL_WEEK:
      return IntervalKind::kWeek;
    case IDC_INTERVAL_MONTH:
      return IntervalKind::kMonth;
    default:
      return IntervalKind::kCustom;
  }
}

void DetailsPage::OnKindChosen() {
  const IntervalKind kind = ChosenKind();
  if (kind == IntervalKind::kWeek) {
    interval_ = WeekOf(interval_.first, surroundings_.calendar.GetFirstDayOfWeek());
  } else if (kind == IntervalKind::kMonth) {
    interval_ = MonthOf(interval_.first);
  }
  for (const int picker : {IDC_INTERVAL_FROM, IDC_INTERVAL_TO})
    Control(Window(), picker).Enable(kind == IntervalKind::kCustom);
  ShowInterval();
  Refresh();
}

void DetailsPage::StepInterval(bool forwards) {
  interval_ = Step(interval_, ChosenKind(), forwards);
  ShowInterval();
  Refresh();
}

void DetailsPage::OnDatePicked(int picker) {
  const auto date = DatePicker(Window(), picker).Date();
  if (!date) return;
  DateInterval picked = interval_;
  (picker == IDC_INTERVAL_FROM ? picked.first : picked.last) = DayOf(*date);
  if (picked == interval_) return;
  interval_ = picked;
  BoundPickers();
  Refresh();
}

// The dates first: the bounds of the interval before may not allow them.
void DetailsPage::ShowInterval() const {
  const DatePicker from(Window(), IDC_INTERVAL_FROM);
  const DatePicker to(Window(), IDC_INTERVAL_TO);
  from.SetBounds({}, {});
  to.SetBounds({}, {});
  from.SetDate(SystemTimeOf(interval_.first));
  to.SetDate(SystemTimeOf(interval_.last));
  BoundPickers();
}

void DetailsPage::BoundPickers() const {
  DatePicker(Window(), IDC_INTERVAL_FROM).SetBounds({}, SystemTimeOf(interval_.last));
  DatePicker(Window(), IDC_INTERVAL_TO).SetBounds(SystemTimeOf(interval_.first), {});
}

void DetailsPage::Refresh() {
  const ListView list(Window(), IDC_SESSIONS);
  sessions_ = {};
  list.SetRowCount(0);
  Control(Window(), IDC_TOTALS).SetText({});
  sessions_ = SessionList(ReadSessions(surroundings_.database, interval_, CheckedUsers()));
  sessions_.Sort(sortColumn_, isDescending_);
  list.SetRowCount(static_cast<int>(sessions_.Count()));
  ShowTotals();
}

void DetailsPage::ShowTotals() const {
  const SessionTotals totals = sessions_.Totals();
  const std::wstring text = Insert(
      Catalogue().GetMessageText(kMsgTotals),
      {FormatDuration(totals.seconds), FormatInteger(totals.bytesReceived / kBytesPerMegabyte),
       FormatInteger(totals.bytesSent / kBytesPerMegabyte)});
  Control(Window(), IDC_TOTALS).SetText(text);
}

void DetailsPage::SortBy(SessionColumn column) {
  isDescending_ = column == sortColumn_ && !isDescending_;
  sortColumn_ = column;
  sessions_.Sort(column, isDescending_);
  const ListView list(Window(), IDC_SESSIONS);
  list.SelectAll(false);
  list.Redraw();
}

void DetailsPage::OnKey(WORD key) {
  switch (key) {
    case 'A':
      if (IsControlDown()) ListView(Window(), IDC_SESSIONS).SelectAll(true);
      break;
    case 'C':
      if (IsControlDown()) CopySelected();
      break;
    case VK_LEFT:
    case VK_RIGHT:
      StepInterval(key == VK_RIGHT);
      break;
    default:
      break;
  }
}

void DetailsPage::ShowSessionsMenu(POINT position) const {
  const ListView list(Window(), IDC_SESSIONS);
  PopupMenu menu;
  menu.Append(Catalogue().GetMessageText(kMsgCopy), kCopy, list.NextSelected(-1) >= 0);
  menu.Append(Catalogue().GetMessageText(kMsgSelectAll), kSelectAll, sessions_.Count() > 0);
  switch (menu.Track(Window(), position)) {
    case kCopy:
      CopySelected();
      break;
    case kSelectAll:
      list.SelectAll(true);
      break;
    default:
      break;
  }
}

std::wstring DetailsPage::SelectedText() const {
  const ListView list(Window(), IDC_SESSIONS);
  std::wstring text;
  for (int row = list.NextSelected(-1); row >= 0; row = list.NextSelected(row)) {
    for (int column = 0; column < kSessionColumnCount; ++column) {
      if (column > 0) text += L'\t';
      text += sessions_.Text(static_cast<std::size_t>(row), static_cast<SessionColumn>(column));
    }
    text += L"\r\n";
  }
  return text;
}

void DetailsPage::CopySelected() const {
  const std::wstring text = SelectedText();
  if (!text.empty() && !CopyToClipboard(Window(), text))
    ShowMessageBox(kMsgUnknownError, MB_ICONERROR);
}

}  // namespace quillgate
