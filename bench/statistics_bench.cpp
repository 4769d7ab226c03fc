// Measures the statistics over a million sessions of twenty users in ten years. The statements are
// compared with the bare database; the sheet is used on a desktop without a screen, and its list
// compared with the bare statement.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "bare_database.h"
#include "desktop/resident_memory.h"
#include "message_pump.h"
#include "resources/resource.h"
#include "sheet_office.h"
#include "stats/date_interval.h"
#include "stats/session_query.h"
#include "stats/statistics_sheet.h"
#include "stats/top_list.h"

namespace quillgate {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using std::chrono::sys_days;

constexpr char kLogArguments[] =
    " --from 1996-01-01 --to 2005-12-31 --count-users 20 --rows 1000000 --seed 1";
constexpr std::size_t kManyRows = 100'000;

void MakeLog(const fs::path& database) {
  const std::string command = "'" QG_MAKE_LOG "' '" + database.string() + "'" + kLogArguments;
  if (std::system(command.c_str()) != 0) throw std::runtime_error(command);
}

// The database is made once, and again after a change of what makes it.
bool IsMade(const fs::path& database) {
  const fs::path maker = QG_MAKE_LOG;
  if (!fs::exists(database)) return false;
  const auto made = fs::last_write_time(database);
  return made > fs::last_write_time(maker) &&
         made > fs::last_write_time(maker.parent_path() / "session_habits.py");
}

// A program with that log, which is in the week of the machine's clock too.
class Office final : public SheetOffice {
 public:
  Office() {
    UseLog();
    for (const DbRow& row : Query(L"SELECT DISTINCT User FROM ConnLog;"))
      names_.push_back(row.front());
    bare_.emplace(File().string());
  }

  // The current week or month, or as many days up to the end of the month as have so many sessions.
  DateInterval Interval(IntervalKind kind) {
    constexpr sys_days kToday = 2005y / 3 / 14;
    switch (kind) {
      case IntervalKind::kWeek:
        return WeekOf(kToday, calendar_.GetFirstDayOfWeek());
      case IntervalKind::kMonth:
        return MonthOf(kToday);
      case IntervalKind::kCustom:
        break;
    }
    return {FirstDayOfMany(), MonthOf(kToday).last};
  }
  std::wstring Statement(IntervalKind kind) {
    return SessionStatement(Interval(kind), {names_, true});
  }
  void Compare(benchmark::State& state, const std::vector<std::wstring>& statements) {
    CompareQueries(state, *bare_, database_, statements);
  }
  double BareSecondsOf(IntervalKind kind) {
    const std::string sql = Narrow(Statement(kind));
    return bench::MedianSecondsOf(9, [&] { bare_->GetTable(sql); });
  }

  // Milliseconds until the sheet has been closed by the timer procedure.
  double Open(TIMERPROC user) {
    return OpenFor(user, [this] { StatisticsSheet({ui_, database_, calendar_}).Open(names_); });
  }

 private:
  fs::path File() const { return machine_.ProgramFolder() / "quillgate.dat"; }

  // The file has its tables, and is replaced while nobody has it open.
  void UseLog() {
    const fs::path kept = QG_KEPT_LOG;
    database_.DbClose();
    if (!IsMade(kept)) {
      MakeLog(File());
      const fs::path unfinished = kept.string() + ".new";
      fs::copy_file(File(), unfinished, fs::copy_options::overwrite_existing);
      fs::rename(unfinished, kept);
    }
    fs::copy_file(kept, File(), fs::copy_options::overwrite_existing);
    database_.DbOpen();
  }

  sys_days FirstDayOfMany() {
    const std::wstring sql =
        L"SELECT StartDate FROM ConnLog WHERE StartDate < '2005-04-01' ORDER BY StartDate DESC "
        L"LIMIT 1 OFFSET " +
        std::to_wstring(kManyRows - 1) + L";";
    const std::wstring day = Query(sql).front().front();
    return std::chrono::year(std::stoi(day)) / std::stoi(day.substr(5)) / std::stoi(day.substr(8));
  }

  std::vector<std::wstring> names_;
  std::optional<BareDatabase> bare_;
};

// A user in front of the page of sessions. What is done takes until the list has been painted.
class Details {
 public:
  explicit Details(HWND sheet)
      : page_(PropSheet_GetCurrentPageHwnd(sheet)), list_(::GetDlgItem(page_, IDC_SESSIONS)) {}

  int Rows() const { return ListView_GetItemCount(list_); }
  void Look() const {
    ::UpdateWindow(list_);
    PumpMessages();
  }
  double Choose(int interval) const {
    const HWND button = ::GetDlgItem(page_, interval);
    return MillisecondsOf([&] { ::SendMessageW(button, BM_CLICK, 0, 0); });
  }
  double PickFirst(sys_days day) const {
    NMDATETIMECHANGE change{};
    change.nmhdr = HeaderOf(IDC_INTERVAL_FROM, DTN_DATETIMECHANGE);
    change.dwFlags = GDT_VALID;
    change.st = SystemTimeOf(day);
    ::SendMessageW(change.nmhdr.hwndFrom, DTM_SETSYSTEMTIME, GDT_VALID,
                   reinterpret_cast<LPARAM>(&change.st));
    return MillisecondsOf([&] { Notify(change.nmhdr); });
  }
  double ClickHeading(int column) const {
    NMLISTVIEW click{};
    click.hdr = HeaderOf(IDC_SESSIONS, LVN_COLUMNCLICK);
    click.iItem = -1;
    click.iSubItem = column;
    return MillisecondsOf([&] { Notify(click.hdr); });
  }

 private:
  template <class Work>
  double MillisecondsOf(const Work& work) const {
    const auto withPaint = [&] {
      work();
      Look();
    };
    return bench::SecondsOf(withPaint) * 1000;
  }
  NMHDR HeaderOf(int control, UINT code) const {
    return {::GetDlgItem(page_, control), static_cast<UINT_PTR>(control), code};
  }
  void Notify(const NMHDR& header) const {
    ::SendMessageW(page_, WM_NOTIFY, header.idFrom, reinterpret_cast<LPARAM>(&header));
  }

  HWND page_;
  HWND list_;
};

// What the timer procedures are told and what they find.
struct Use {
  sys_days firstDay;
  int weekRows = 0;
  int monthRows = 0;
  int manyRows = 0;
  long addedBytes = 0;  // from the week to many rows
  std::vector<double> week;
  std::vector<double> month;
  std::vector<double> many;
  std::vector<double> worstSort;
};
Use use;

void CALLBACK LookAndClose(HWND, UINT, UINT_PTR timer, DWORD) noexcept {
  const HWND sheet = AwaitedSheet(timer);
  if (sheet == nullptr) return;
  const Details details(sheet);
  details.Look();
  use.weekRows = details.Rows();
  PropSheet_PressButton(sheet, PSBTN_CANCEL);
}

// In the end the list is sorted by each other column, and by the first one again.
void CALLBACK UsePage(HWND, UINT, UINT_PTR timer, DWORD) noexcept {
  const HWND sheet = AwaitedSheet(timer);
  if (sheet == nullptr) return;
  const Details details(sheet);
  details.Look();
  use.week.push_back(details.Choose(IDC_INTERVAL_WEEK));
  use.weekRows = details.Rows();
  // What the process has left from before would not be added again.
  ::malloc_trim(0);
  const long before = ResidentBytes();
  use.month.push_back(details.Choose(IDC_INTERVAL_MONTH));
  use.monthRows = details.Rows();
  details.Choose(IDC_INTERVAL_CUSTOM);
  use.many.push_back(details.PickFirst(use.firstDay));
  use.addedBytes = std::max(use.addedBytes, ResidentBytes() - before);
  use.manyRows = details.Rows();
  double worst = 0;
  for (const int column : {1, 2, 3, 4, 0})
    worst = std::max(worst, details.ClickHeading(column));
  use.worstSort.push_back(worst);
  PropSheet_PressButton(sheet, PSBTN_CANCEL);
}

void ListStatement(benchmark::State& state, IntervalKind kind) {
  Office office;
  office.Compare(state, {office.Statement(kind)});
}
BENCHMARK_CAPTURE(ListStatement, week, IntervalKind::kWeek)
    ->UseManualTime()
    ->Iterations(50)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ListStatement, month, IntervalKind::kMonth)
    ->UseManualTime()
    ->Iterations(50)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ListStatement, many, IntervalKind::kCustom)
    ->UseManualTime()
    ->Iterations(20)
    ->Unit(benchmark::kMillisecond);

void TopListStatements(benchmark::State& state) {
  Office office;
  office.Compare(state, {TopListStatement(UsageMeasure::kSeconds),
                         TopListStatement(UsageMeasure::kBytesReceived),
                         TopListStatement(UsageMeasure::kBytesSent)});
}
BENCHMARK(TopListStatements)->UseManualTime()->Iterations(10)->Unit(benchmark::kMillisecond);

void OpenSheet(benchmark::State& state) {
  Office office;
  std::vector<double> spent;
  for (auto _ : state)
    spent.push_back(office.Open(LookAndClose));
  state.counters["open_and_close_ms"] = bench::Median(spent);
  state.counters["rows"] = use.weekRows;
  if (use.weekRows == 0) state.SkipWithError("the list is empty");
}
BENCHMARK(OpenSheet)->Iterations(20)->Unit(benchmark::kMillisecond);

void UseSheet(benchmark::State& state) {
  Office office;
  use = {};
  use.firstDay = office.Interval(IntervalKind::kCustom).first;
  for (auto _ : state)
    office.Open(UsePage);
  const double many = bench::Median(use.many);
  state.counters["week_ms"] = bench::Median(use.week);
  state.counters["month_ms"] = bench::Median(use.month);
  state.counters["many_ms"] = many;
  state.counters["many_to_bare"] = many / (office.BareSecondsOf(IntervalKind::kCustom) * 1000);
  state.counters["sort_ms"] = bench::Median(use.worstSort);
  state.counters["added_MB"] = static_cast<double>(use.addedBytes) / 1e6;
  state.counters["rows"] = use.manyRows;
  const bool isUsed = 0 < use.weekRows && use.weekRows < use.monthRows &&
                      use.monthRows < use.manyRows &&
                      static_cast<std::size_t>(use.manyRows) >= kManyRows;
  if (!isUsed) state.SkipWithError("the list does not show the intervals");
}
BENCHMARK(UseSheet)->Iterations(5)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quillgate
