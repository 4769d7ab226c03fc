// Measures the cost of the connection sheet: opening and closing it, and one refresh of its live
// page, on a desktop without a screen. The bare alternative of a refresh is to set the same texts
// once more.
#include <windows.h>

#include <benchmark/benchmark.h>
#include <prsht.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <optional>
#include <vector>

#include "frame/help_system.h"
#include "platform/kit/hidden_window.h"
#include "program/program_test.h"
#include "program/recording_indicator.h"
#include "resources/resource.h"
#include "storage/db_transaction.h"
#include "ui/connection_sheet.h"

namespace quillgate {
namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

// The common user on a machine with one network card and some thousand finished sessions.
class Office {
 public:
  Office() {
    machine_.UseDesktop();
    keepAlive_.emplace();
    machine_.Interfaces().Set({platform::SimulatedCard(2, L"eth0")});
    machine_.AddIpFilterDriver();
    machine_.AddDriver(L"QGIpHook", L"QGIpHook");
    auto users = std::make_shared<UserCollection>(LogonSystem::kNone, database_);
    EnsureBuiltInUsers(*users);
    logon_.SetUsers(users);
    FillLog();
    session_ = std::make_unique<SessionLog>(
        SessionSurroundings{database_, settings_, catalogue_, calendar_, logon_, indicator_});
    logon_.SetSessionControl(session_.get());
    logon_.LogOn(L"User");
  }
  ~Office() { logon_.SetSessionControl(nullptr); }
  Office(const Office&) = delete;
  Office& operator=(const Office&) = delete;

  void Open() { sheet_.Open(*session_); }
  void Pass(std::chrono::milliseconds time) { machine_.Time().Advance(time); }

 private:
  void FillLog() {
    DbTransaction transaction(database_);
    for (int i = 0; i < 5000; ++i)
      database_.DbExecute(
          L"INSERT INTO ConnLog VALUES ('User', '60', '1000', '1000', "
          L"'2005-03-14 10:00:00');");
    transaction.Commit();
  }

  platform::SimulatedMachine machine_;
  std::optional<HiddenWindow> keepAlive_;  // keeps the desktop open between sheets
  Database database_;
  Settings settings_{database_};
  MessageCatalogue catalogue_;
  WeekCalendar calendar_;
  NamedIdentity identity_;
  RecordingIndicator indicator_;
  LogonSession logon_{settings_, identity_};
  HelpSystem help_;
  StopRequest stop_;
  UiSurroundings ui_{catalogue_, help_, stop_};
  std::unique_ptr<SessionLog> session_;
  ConnectionSheet sheet_{{ui_, settings_, database_, calendar_, logon_}};
};

double Median(std::vector<double> values) {
  std::ranges::sort(values);
  return values.empty() ? 0 : values[values.size() / 2];
}

template <class Work>
double MedianMilliseconds(int times, const Work& work) {
  std::vector<double> spent;
  for (int i = 0; i < times; ++i) {
    const auto start = Clock::now();
    work();
    spent.push_back(Milliseconds(Clock::now() - start).count());
  }
  return Median(spent);
}

constexpr UINT kTimerMilliseconds = 10;
// The timer of the live page.
constexpr WPARAM kRefreshTimer = 1;

struct RefreshCost {
  double refresh = 0;
  double texts = 0;
};
RefreshCost refreshCost;

// Presses Close once the sheet is active.
void CALLBACK CloseSheet(HWND, UINT, UINT_PTR timer, DWORD) noexcept {
  const HWND sheet = ::GetActiveWindow();
  if (sheet == nullptr) return;
  ::KillTimer(nullptr, timer);
  PropSheet_PressButton(sheet, PSBTN_CANCEL);
}

void CALLBACK MeasureRefresh(HWND, UINT, UINT_PTR timer, DWORD) noexcept {
  const HWND sheet = ::GetActiveWindow();
  if (sheet == nullptr) return;
  ::KillTimer(nullptr, timer);
  const HWND page = PropSheet_GetCurrentPageHwnd(sheet);
  refreshCost.refresh =
      MedianMilliseconds(500, [page] { ::SendMessageW(page, WM_TIMER, kRefreshTimer, 0); });
  refreshCost.texts = MedianMilliseconds(500, [page] {
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
  for (auto _ : state) {
    ::SetTimer(nullptr, 0, kTimerMilliseconds, CloseSheet);
    office.Pass(std::chrono::milliseconds(kTimerMilliseconds));
    const auto start = Clock::now();
    office.Open();
    spent.push_back(Milliseconds(Clock::now() - start).count());
  }
  state.counters["open_and_close_ms"] = Median(spent);
}
BENCHMARK(OpenSheet)->Iterations(100)->Unit(benchmark::kMillisecond);

void RefreshPage(benchmark::State& state) {
  Office office;
  for (auto _ : state) {
    ::SetTimer(nullptr, 0, kTimerMilliseconds, MeasureRefresh);
    office.Pass(std::chrono::milliseconds(kTimerMilliseconds));
    office.Open();
  }
  state.counters["refresh_ms"] = refreshCost.refresh;
  state.counters["to_bare_texts"] =
      refreshCost.texts > 0 ? refreshCost.refresh / refreshCost.texts : 0;
}
BENCHMARK(RefreshPage)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quillgate
