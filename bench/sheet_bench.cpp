// Measures the cost of the connection sheet: opening and closing it, and one refresh of its live
// page, on a desktop without a screen. The bare alternative of a refresh is to set the same texts
// once more.
#include <benchmark/benchmark.h>

#include "resources/resource.h"
#include "sheet_office.h"
#include "storage/db_transaction.h"
#include "ui/connection_sheet.h"

namespace quillgate {
namespace {

// The common user on a machine with one network card and some thousand finished sessions.
class Office final : public SheetOffice {
 public:
  Office() {
    UseSystem(L"NONE", {});
    EnsureBuiltInUsers(*users_);
    FillLog();
    logon_.LogOn(L"User");
  }

  // Milliseconds until the sheet has been closed by the timer procedure.
  double Open(TIMERPROC user) {
    return OpenFor(user, [this] { sheet_.Open(*session_); });
  }

 private:
  void FillLog() {
    DbTransaction transaction(database_);
    for (int i = 0; i < 5000; ++i)
      Insert(L"ConnLog", {L"User", L"60", L"1000", L"1000", L"2005-03-14 10:00:00"});
    transaction.Commit();
  }

  ConnectionSheet sheet_{{ui_, settings_, database_, calendar_, logon_}};
};

// The timer of the live page.
constexpr WPARAM kRefreshTimer = 1;

double refreshSeconds = 0;
double textsSeconds = 0;

void CALLBACK MeasureRefresh(HWND, UINT, UINT_PTR timer, DWORD) noexcept {
  const HWND sheet = AwaitedSheet(timer);
  if (sheet == nullptr) return;
  const HWND page = PropSheet_GetCurrentPageHwnd(sheet);
  refreshSeconds =
      bench::MedianSecondsOf(500, [page] { ::SendMessageW(page, WM_TIMER, kRefreshTimer, 0); });
  textsSeconds = bench::MedianSecondsOf(500, [page] {
    for (int control = IDC_USER_NAME; control <= IDC_SENT; ++control)
      ::SetWindowTextW(::GetDlgItem(page, control), L"1,048,576");
    for (int control = IDC_TIME_ONLINE_TODAY; control <= IDC_UPLOADS_MONTH; ++control)
      ::SetWindowTextW(::GetDlgItem(page, control), L"1,048,576.00");
    ::SetWindowTextW(::GetDlgItem(page, IDC_DOWNLOAD_RATE), L"1.00");
    ::SetWindowTextW(::GetDlgItem(page, IDC_UPLOAD_RATE), L"1.00");
  });
  PropSheet_PressButton(sheet, PSBTN_CANCEL);
}

void OpenSheet(benchmark::State& state) {
  Office office;
  std::vector<double> spent;
  for (auto _ : state)
    spent.push_back(office.Open(CloseSheet));
  state.counters["open_and_close_ms"] = bench::Median(spent);
}
BENCHMARK(OpenSheet)->Iterations(100)->Unit(benchmark::kMillisecond);

void RefreshPage(benchmark::State& state) {
  Office office;
  for (auto _ : state)
    office.Open(MeasureRefresh);
  state.counters["refresh_ms"] = refreshSeconds * 1000;
  state.counters["to_bare_texts"] = textsSeconds > 0 ? refreshSeconds / textsSeconds : 0;
}
BENCHMARK(RefreshPage)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quillgate
